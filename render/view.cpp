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
    throw std::invalid_argument("no number");
  return number;
}

View at_angles(double azimuth, double elevation) {
  constexpr double kDegree = std::numbers::pi / 180;
  const double c = std::cos(elevation * kDegree);
  const Direction from = {c * std::cos(azimuth * kDegree), c * std::sin(azimuth * kDegree),
                          std::sin(elevation * kDegree)};
  constexpr double kSteep = 1e-6;
  return {from, std::abs(c) < kSteep ? Direction{0, 1, 0} : Direction{0, 0, c < 0 ? -1.0 : 1.0}};
}

}  // namespace

View parse_view(std::string_view text) {
  if (text == "iso") return at_angles(kIsoAzimuth, kIsoElevation);
  if (text == "+x") return {{1, 0, 0}, {0, 0, 1}};
  if (text == "-x") return {{-1, 0, 0}, {0, 0, 1}};
  if (text == "+y") return {{0, 1, 0}, {0, 0, 1}};
  if (text == "-y") return {{0, -1, 0}, {0, 0, 1}};
  if (text == "+z") return {{0, 0, 1}, {0, 1, 0}};
  if (text == "-z") return {{0, 0, -1}, {0, 1, 0}};
  const auto [azimuth, elevation] = parse_pair(text);
  return at_angles(azimuth, elevation);
}

std::array<double, 2> parse_pair(std::string_view text) {
  const std::size_t comma = text.find(',');
  if (comma == std::string_view::npos) throw std::invalid_argument("no pair");
  return {parse_number(text.substr(0, comma)), parse_number(text.substr(comma + 1))};
}

}  // namespace render
