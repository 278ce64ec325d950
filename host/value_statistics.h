// Range and mean of the values of a variable, undefined ones left out.
#pragma once

#include <cstddef>
#include <limits>
#include <span>

namespace host {

struct ValueStatistics {
  float minimum = std::numeric_limits<float>::infinity();  // as they are here without any number
  float maximum = -std::numeric_limits<float>::infinity();
  double sum = 0;
  std::size_t numbers = 0;      // values that are numbers
  std::size_t undefined = 0;    // places that the file marks as undefined, or without a value
  std::size_t not_numbers = 0;  // values that are NaN in the file

  bool has_numbers() const { return numbers > 0; }
  double mean() const { return sum / static_cast<double>(numbers); }

  // Adds the values of another part of the dataset.
  void add(std::span<const float> values);
};

}  // namespace host
