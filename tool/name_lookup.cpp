#include "tool/name_lookup.h"

#include <charconv>
#include <vector>

#include "fmt/format.h"
#include "host/text_encoding.h"

namespace tool {
namespace {

// `what` is the kind of thing, for the messages.
template <typename Items>
int find_number(const Items& items, const std::string& text, const std::string& file, const char* what) {
  if (const auto number = number_in(text, 1, static_cast<int>(items.size()))) return *number;
  std::vector<int> found;
  for (const auto& item : items) {
    if (is_name(item.name, text)) found.push_back(item.number);
  }
  if (found.size() == 1) return found.front();
  if (found.empty()) throw no_such_item(file, what, text, items.size());
  throw CommandError(ExitStatus::usage, file,
                     fmt::format("{}s {} are named '{}': give a number", what, fmt::join(found, ", "), text));
}

}  // namespace

std::optional<int> number_in(std::string_view text, int lowest, int highest) {
  int number = 0;
  const auto parsed = std::from_chars(text.data(), text.data() + text.size(), number);
  const bool is_number = parsed.ec == std::errc() && parsed.ptr == text.data() + text.size();
  if (!is_number || number < lowest || number > highest) return std::nullopt;
  return number;
}

bool is_name(const std::string& name, const std::string& text) {
  return name == text || host::to_utf8(name) == text;
}

CommandError no_such_item(const std::string& file, const char* what, const std::string& text,
                          std::size_t count) {
  return {ExitStatus::usage, file,
          fmt::format("there is no {0} '{1}': the {0}s are 1 to {2}", what, text, count)};
}

int find_part(const host::Session& session, const std::string& text) {
  return find_number(session.parts(), text, session.path().string(), "part");
}

int find_variable(host::Session& session, const std::string& text) {
  return find_number(session.variables(), text, session.path().string(), "variable");
}

}  // namespace tool
