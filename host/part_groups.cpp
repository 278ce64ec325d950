#include "host/part_groups.h"

#include <array>
#include <optional>
#include <utility>

#include "host/diagnostic_text.h"

namespace host {
namespace {

constexpr std::array<std::pair<std::string_view, char>, 5> kReferences = {
    {{"&amp;", '&'}, {"&lt;", '<'}, {"&gt;", '>'}, {"&quot;", '"'}, {"&apos;", '\''}}};

std::string unescape(std::string_view text) {
  std::string plain;
  while (!text.empty()) {
    std::size_t taken = 1;
    char character = text.front();
    for (const auto& [reference, meaning] : kReferences) {
      if (text.starts_with(reference)) {
        taken = reference.size();
        character = meaning;
      }
    }
    plain += character;
    text.remove_prefix(taken);
  }
  return plain;
}

// The text between `before` at the start of the line (ignoring leading blanks) and `after` at its end.
std::optional<std::string_view> between(std::string_view line, std::string_view before,
                                        std::string_view after) {
  while (line.starts_with(' ')) line.remove_prefix(1);
  if (line.size() < before.size() + after.size() || !line.starts_with(before) || !line.ends_with(after)) {
    return std::nullopt;
  }
  return line.substr(before.size(), line.size() - before.size() - after.size());
}

}  // namespace

std::vector<PartGroup> parse_part_groups(std::string_view xml) {
  std::vector<PartGroup> groups;
  bool in_group = false;
  for (const std::string_view line : split_lines(xml)) {
    if (const auto group = between(line, "<group name=\"", "\">")) {
      groups.push_back({unescape(*group), {}});
      in_group = true;
    } else if (between(line, "</group>", "")) {
      in_group = false;
    } else if (const auto part = between(line, "<part name=\"", "\"></part>"); part && in_group) {
      groups.back().parts.push_back(unescape(*part));
    }
  }
  return groups;
}

}  // namespace host
