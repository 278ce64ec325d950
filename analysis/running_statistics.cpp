#include "analysis/running_statistics.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <stdexcept>

#include "host/undefined_value.h"

namespace analysis {

void RunningStatistics::add(std::span<const float> values) {
  if (mean_.empty()) {
    mean_.resize(values.size(), 0);
    squares_.resize(values.size(), 0);
    minimum_.resize(values.size(), std::numeric_limits<float>::infinity());
    maximum_.resize(values.size(), -std::numeric_limits<float>::infinity());
    count_.resize(values.size(), 0);
  }
  if (values.size() != mean_.size()) throw std::invalid_argument("the number of values has changed");
  for (std::size_t i = 0; i < values.size(); ++i) {
    const float value = values[i];
    if (host::is_undefined(value) || std::isnan(value)) continue;
    // Welford's recurrence, which does not lose digits as sums of squares do.
    const auto number = static_cast<double>(value);
    const double before = number - mean_[i];
    mean_[i] += before / static_cast<double>(++count_[i]);
    squares_[i] += before * (number - mean_[i]);
    minimum_[i] = std::min(minimum_[i], value);
    maximum_[i] = std::max(maximum_[i], value);
  }
}

double RunningStatistics::mean(std::size_t i) const {
  return count_[i] == 0 ? std::numeric_limits<double>::quiet_NaN() : mean_[i];
}

double RunningStatistics::deviation(std::size_t i) const {
  return std::sqrt(squares_[i] / static_cast<double>(count_[i]));
}

double RunningStatistics::root_mean_square(std::size_t i) const {
  return std::sqrt(mean_[i] * mean_[i] + squares_[i] / static_cast<double>(count_[i]));
}

float RunningStatistics::minimum(std::size_t i) const {
  return count_[i] == 0 ? std::numeric_limits<float>::quiet_NaN() : minimum_[i];
}

float RunningStatistics::maximum(std::size_t i) const {
  return count_[i] == 0 ? std::numeric_limits<float>::quiet_NaN() : maximum_[i];
}

}  // namespace analysis
