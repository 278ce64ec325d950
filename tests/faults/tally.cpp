#include "tests/faults/tally.h"

namespace faults {

std::string Tally::text() const {
  std::string text = std::to_string(cases) + " cases:";
  for (int i = 0; i < kOutcomes; ++i) {
    const std::size_t count = by_outcome.at(static_cast<std::size_t>(i));
    if (count > 0)
      text.append(" ")
          .append(std::to_string(count))
          .append(" ")
          .append(name_of(static_cast<Outcome>(i)))
          .append(",");
  }
  text.pop_back();
  return text;
}

}  // namespace faults
