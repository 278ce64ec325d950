// Range and mean of the values of a variable, without undefined ones.
#pragma once

#include <cstddef>
#include <limits>
#include <span>

namespace host {

struct ValueStatistics {
  float minimum = std::numeric_limits<float>::infinity();  // as initialised if there are no numbers
  float maximum = -std::numeric_limits<float>::infinity();
  double sum = 0;
  std::size_t numbers = 0;      // values that are neither undefined nor NaN
  std::size_t undefined = 0;    // values that the file marks as undefined or lacks
  std::size_t not_numbers = 0;  // NaN values in the file

  bool has_numbers() const { return numbers > 0; }
  double mean() const { return sum / static_cast<double>(numbers); }

  // Adds the values of another part of the dataset.
  void add(std::span<const float> values);
};

}  // namespace host
