#include "tool/name_lookup.h"

#include <charconv>
#include <vector>

#include "fmt/format.h"
#include "host/text_encoding.h"
#include "tool/exit_status.h"

namespace tool {
namespace {

// `what` is the kind of thing, for the messages.
template <typename Items>
int find_number(const Items& items, const std::string& text, const std::string& file, const char* what) {
  int number = 0;
  const auto parsed = std::from_chars(text.data(), text.data() + text.size(), number);
  const bool is_number = parsed.ec == std::errc() && parsed.ptr == text.data() + text.size();
  if (is_number && number >= 1 && number <= static_cast<int>(items.size())) return number;

  std::vector<int> found;
  for (const auto& item : items) {
    if (item.name == text || host::to_utf8(item.name) == text) found.push_back(item.number);
  }
  if (found.size() == 1) return found.front();
  if (found.empty()) {
    throw CommandError(ExitStatus::usage, file,
                       fmt::format("there is no {0} '{1}': the {0}s are 1 to {2}", what, text, items.size()));
  }
  throw CommandError(ExitStatus::usage, file,
                     fmt::format("{}s {} are named '{}': give a number", what, fmt::join(found, ", "), text));
}

}  // namespace

int find_part(const host::Session& session, const std::string& text) {
  return find_number(session.parts(), text, session.path().string(), "part");
}

int find_variable(host::Session& session, const std::string& text) {
  return find_number(session.variables(), text, session.path().string(), "variable");
}

}  // namespace tool
