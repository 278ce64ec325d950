// How often values occur, in intervals of equal width.
#pragma once

#include <cstddef>
#include <span>
#include <vector>

namespace tool {

struct Histogram {
  float low = 0;  // the lowest and the highest finite value
  float high = 0;
  // Values per interval; the last one includes `high`. Empty when there is no finite value.
  std::vector<std::size_t> counts;

  // Where interval `i` begins, and for i = counts.size() where the last one ends.
  double edge(std::size_t i) const;
};

// Undefined values, infinities and what is not a number are left out. If all values are equal, they are in
// the first interval.
Histogram make_histogram(std::span<const float> values, std::size_t intervals);

}  // namespace tool
