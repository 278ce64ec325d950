#include "host/value_statistics.h"

#include <algorithm>
#include <cmath>

#include "host/undefined_value.h"

namespace host {

void ValueStatistics::add(std::span<const float> values) {
  float low = minimum;
  float high = maximum;
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
  // Turns -0 into 0.
  minimum = low + 0.0F;
  maximum = high + 0.0F;
}

}  // namespace host
