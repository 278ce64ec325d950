#include "tool/number_range.h"

#include <charconv>
#include <string>
#include <system_error>

#include "CLI/CLI.hpp"
#include "fmt/format.h"

namespace tool {
namespace {

std::optional<int> parse_number(std::string_view text) {
  int number = 0;
  const auto parsed = std::from_chars(text.data(), text.data() + text.size(), number);
  const bool is_number = parsed.ec == std::errc() && parsed.ptr == text.data() + text.size() && number >= 0 &&
                         !text.starts_with('-');
  return is_number ? std::optional(number) : std::nullopt;
}

// A range whose ends may still be missing: "last" is an end without a number.
struct ParsedRange {
  std::optional<int> from;
  std::optional<int> to;
  int stride = 1;
};

std::optional<ParsedRange> parse_form(std::string_view text) {
  ParsedRange range;
  const std::size_t dash = text.find('-');
  const std::size_t colon = text.find(':');
  if (colon != std::string_view::npos) {
    const std::optional<int> stride = parse_number(text.substr(colon + 1));
    if (!stride || *stride == 0 || dash == std::string_view::npos) return std::nullopt;
    range.stride = *stride;
    text = text.substr(0, colon);
  }
  const auto end = [](std::string_view word, std::optional<int>& number) {
    number = parse_number(word);
    return number || word == "last";
  };
  if (!end(text.substr(0, dash), range.from)) return std::nullopt;
  const std::string_view behind = dash < text.size() ? text.substr(dash + 1) : "";
  if (dash == std::string_view::npos) {
    range.to = range.from;
  } else if (!behind.empty() && !end(behind, range.to)) {
    return std::nullopt;
  }
  return range;
}

}  // namespace

std::optional<NumberRange> parse_range(std::string_view text, int lowest, int highest) {
  const std::optional<ParsedRange> parsed = parse_form(text);
  if (!parsed) return std::nullopt;
  const NumberRange range{parsed->from.value_or(highest), parsed->to.value_or(highest), parsed->stride};
  if (range.from < lowest || range.to > highest || range.from > range.to) return std::nullopt;
  return range;
}

bool is_range(std::string_view text) {
  return parse_form(text).has_value();
}

CLI::Validator whole_number(std::size_t lowest, std::size_t highest) {
  // The library's own words differ from version to version.
  return CLI::Validator(
      [=](const std::string& text) {
        std::size_t value = 0;
        const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
        const bool is_number = error == std::errc() && end == text.data() + text.size();
        if (is_number && value >= lowest && value <= highest) return std::string();
        return fmt::format("'{}' is not a number from {} to {}", text, lowest, highest);
      },
      "");
}

}  // namespace tool
