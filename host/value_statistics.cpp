#include "host/value_statistics.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "host/undefined_value.h"

namespace host {

void ValueStatistics::add(std::span<const float> values) {
  constexpr float kInfinity = std::numeric_limits<float>::infinity();
  float low = has_numbers() ? minimum : kInfinity;
  float high = has_numbers() ? maximum : -kInfinity;
  for (const float value : values) {
    if (is_undefined(value)) {
      ++undefined;
    } else if (std::isnan(value)) {
      ++not_numbers;
    } else {
      low = std::min(low, value);
      high = std::max(high, value);
      sum += static_cast<double>(value);
      ++numbers;
    }
  }
  if (!has_numbers()) return;
  minimum = low;
  maximum = high;
}

}  // namespace host
