#include "tool/histogram.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "host/undefined_value.h"

namespace tool {
namespace {

bool counts_in(float value) {
  return std::isfinite(value) && !host::is_undefined(value);
}

}  // namespace

double Histogram::edge(std::size_t i) const {
  const double from = static_cast<double>(low);
  const double share = static_cast<double>(i) / static_cast<double>(counts.size());
  return from + share * (static_cast<double>(high) - from);
}

Histogram make_histogram(std::span<const float> values, std::size_t intervals) {
  Histogram histogram{.low = std::numeric_limits<float>::infinity(),
                      .high = -std::numeric_limits<float>::infinity(),
                      .counts = {}};
  for (const float value : values) {
    if (!counts_in(value)) continue;
    histogram.low = std::min(histogram.low, value);
    histogram.high = std::max(histogram.high, value);
  }
  if (histogram.low > histogram.high) return {};
  histogram.counts.assign(intervals, 0);
  const double low = static_cast<double>(histogram.low);
  const double width = static_cast<double>(histogram.high) - low;
  const double scale = width > 0 ? static_cast<double>(intervals) / width : 0;
  for (const float value : values) {
    if (!counts_in(value)) continue;
    const auto interval = static_cast<std::size_t>((static_cast<double>(value) - low) * scale);
    ++histogram.counts[std::min(interval, intervals - 1)];
  }
  return histogram;
}

}  // namespace tool
