#include "render/view.h"

#include <charconv>
#include <cmath>
#include <numbers>
#include <stdexcept>

namespace render {
namespace {

constexpr double kIsoAzimuth = -60;
constexpr double kIsoElevation = 30;

double parse_number(std::string_view text) {
  double number = 0;
  if (text.starts_with('+')) text.remove_prefix(1);
  const auto parsed = std::from_chars(text.data(), text.data() + text.size(), number);
  if (parsed.ec != std::errc() || parsed.ptr != text.data() + text.size() || !std::isfinite(number))
    throw std::invalid_argument("not a number");
  return number;
}

// `up` is at right angles to `from` at every elevation, so the azimuth counts at the poles too.
View at_angles(double azimuth, double elevation) {
  constexpr double kDegree = std::numbers::pi / 180;
  const double cos_a = std::cos(azimuth * kDegree);
  const double sin_a = std::sin(azimuth * kDegree);
  const double cos_e = std::cos(elevation * kDegree);
  const double sin_e = std::sin(elevation * kDegree);
  return {{cos_e * cos_a, cos_e * sin_a, sin_e}, {-sin_e * cos_a, -sin_e * sin_a, cos_e}};
}

}  // namespace

Direction right_of(const View& view) {
  const Direction& up = view.up;
  const Direction& from = view.from;
  return {up[1] * from[2] - up[2] * from[1], up[2] * from[0] - up[0] * from[2],
          up[0] * from[1] - up[1] * from[0]};
}

View parse_view(std::string_view text) {
  if (text == "iso") return at_angles(kIsoAzimuth, kIsoElevation);
  if (text == "+x") return {{1, 0, 0}, {0, 0, 1}};
  if (text == "-x") return {{-1, 0, 0}, {0, 0, 1}};
  if (text == "+y") return {{0, 1, 0}, {0, 0, 1}};
  if (text == "-y") return {{0, -1, 0}, {0, 0, 1}};
  if (text == "+z") return {{0, 0, 1}, {0, 1, 0}};
  if (text == "-z") return {{0, 0, -1}, {0, 1, 0}};
  const auto [azimuth, elevation] = parse_pair(text);
  constexpr double kSteepest = 90;
  if (std::abs(elevation) > kSteepest) throw std::invalid_argument("not an elevation");
  return at_angles(azimuth, elevation);
}

std::array<double, 2> parse_pair(std::string_view text) {
  const std::size_t comma = text.find(',');
  if (comma == std::string_view::npos) throw std::invalid_argument("not a pair");
  return {parse_number(text.substr(0, comma)), parse_number(text.substr(comma + 1))};
}

}  // namespace render
