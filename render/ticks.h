// Round numbers for the ticks of a legend.
#pragma once

#include <string>
#include <vector>

namespace render {

struct Tick {
  double value = 0;
  std::string label;
};

// At least two and at most `most` ticks in [low, high], ascending: multiples of 1, 2 or 5 times a power of
// ten. The labels have as many digits as it takes to tell the ticks apart. Requires low < high and most >= 2.
std::vector<Tick> make_ticks(double low, double high, int most);

}  // namespace render
