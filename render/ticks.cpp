#include "render/ticks.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>

namespace render {
namespace {

// A range narrower than this, relative to its ends, has no round numbers in double precision.
constexpr double kNarrowest = 1e-12;
// From here on numbers are written with an exponent.
constexpr double kLargeNumber = 1e7;
constexpr int kManyDecimals = 6;

std::string formatted(const char* format, int decimals, double value) {
  std::array<char, 400> text{};
  std::snprintf(text.data(), text.size(), format, decimals, value);
  return text.data();
}

// The ticks first * step to last * step, where step = mantissa * 10^exponent.
struct Series {
  int mantissa = 1;
  int exponent = 0;
  double first = 0;
  double last = 0;

  double count() const { return last - first + 1; }
  // Divides by a power of ten where that is exact and a multiplication is not.
  double value(double multiple) const {
    const double number = multiple * mantissa;
    return exponent < 0 ? number / std::pow(10.0, -exponent) : number * std::pow(10.0, exponent);
  }
};

Series series_with(double low, double high, int mantissa, int exponent) {
  constexpr double kTolerance = 1e-6;  // of a step
  const double step = mantissa * std::pow(10.0, exponent);
  return {mantissa, exponent, std::ceil(low / step - kTolerance), std::floor(high / step + kTolerance)};
}

// The finest series of at most `most` ticks, or the next finer one if that has fewer than two.
Series best_series(double low, double high, int most) {
  Series finer{};
  for (int exponent = static_cast<int>(std::floor(std::log10((high - low) / most))) - 1;; ++exponent) {
    for (const int mantissa : {1, 2, 5}) {
      const Series series = series_with(low, high, mantissa, exponent);
      if (series.count() <= most) return series.count() < 2 ? finer : series;
      finer = series;
    }
  }
}

std::string label_of(double value, double largest, int exponent) {
  if (value == 0) return "0";
  const int decimals = std::max(0, -exponent);
  if (largest < kLargeNumber && decimals <= kManyDecimals) return formatted("%.*f", decimals, value);
  const int magnitude = static_cast<int>(std::floor(std::log10(std::abs(value))));
  return formatted("%.*e", std::max(0, magnitude - exponent), value);
}

}  // namespace

std::vector<Tick> make_ticks(double low, double high, int most) {
  const double largest = std::max(std::abs(low), std::abs(high));
  if (high - low < kNarrowest * largest) {
    constexpr int kAllDigits = 17;
    return {{low, formatted("%.*g", kAllDigits, low)}, {high, formatted("%.*g", kAllDigits, high)}};
  }
  const Series series = best_series(low, high, most);
  const bool is_too_fine = series.count() > most;
  const double stride = is_too_fine ? series.count() - 1 : 1;
  std::vector<Tick> ticks;
  for (double multiple = series.first; multiple <= series.last; multiple += stride) {
    const double value = series.value(multiple);
    ticks.push_back({value, label_of(value, largest, series.exponent)});
  }
  return ticks;
}

}  // namespace render
