#include "tool/point_text.h"

#include <charconv>
#include <cmath>
#include <system_error>

#include "fmt/format.h"
#include "tool/exit_status.h"

namespace tool {
namespace {

CommandError wrong_point(const char* option, const std::string& text, const std::string& wanted) {
  return {ExitStatus::usage, fmt::format("{}: '{}' is not {}", option, text, wanted)};
}

}  // namespace

std::optional<double> parse_real(std::string_view text) {
  while (text.starts_with(' ')) text.remove_prefix(1);
  while (text.ends_with(' ')) text.remove_suffix(1);
  if (text.starts_with('+') && !text.starts_with("+-")) text.remove_prefix(1);
  double number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error != std::errc() || end != text.data() + text.size() || !std::isfinite(number)) return std::nullopt;
  return number;
}

std::optional<analysis::Vec3> parse_point(std::string_view text) {
  analysis::Vec3 point{};
  for (std::size_t axis = 0; axis < point.size(); ++axis) {
    const std::size_t comma = axis + 1 < point.size() ? text.find(',') : text.size();
    if (comma == std::string_view::npos) return std::nullopt;
    const std::optional<double> number = parse_real(text.substr(0, comma));
    if (!number) return std::nullopt;
    point[axis] = *number;
    text.remove_prefix(std::min(comma + 1, text.size()));
  }
  return point;
}

analysis::Vec3 point_of_option(const char* option, const std::string& text) {
  const std::optional<analysis::Vec3> point = parse_point(text);
  if (!point) throw wrong_point(option, text, fmt::format("a point: write {}", kPointForm));
  return *point;
}

PointPair points_of_option(const char* option, const std::string& text) {
  const std::size_t colon = text.find(':');
  const auto first = parse_point(std::string_view(text).substr(0, colon));
  const auto second =
      colon == std::string::npos ? std::nullopt : parse_point(std::string_view(text).substr(colon + 1));
  if (!first || !second)
    throw wrong_point(option, text, fmt::format("two points: write {0}:{0}", kPointForm));
  return {*first, *second};
}

}  // namespace tool
