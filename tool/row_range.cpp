#include "tool/row_range.h"

#include <charconv>

namespace tool {
namespace {

std::optional<std::size_t> row_number(std::string_view text, std::size_t count) {
  std::size_t number = 0;
  const auto parsed = std::from_chars(text.data(), text.data() + text.size(), number);
  const bool is_number = parsed.ec == std::errc() && parsed.ptr == text.data() + text.size();
  if (!is_number || number < 1 || number > count) return std::nullopt;
  return number;
}

}  // namespace

std::optional<RowRange> parse_rows(std::string_view text, std::size_t count) {
  const std::size_t dash = text.find('-');
  const auto from = row_number(text.substr(0, dash), count);
  const auto to = dash == std::string_view::npos ? from : row_number(text.substr(dash + 1), count);
  if (!from || !to || *from > *to) return std::nullopt;
  return RowRange{*from - 1, *to};
}

}  // namespace tool
