// The outcomes of the cases of a sweep.
#pragma once

#include <array>
#include <cstddef>
#include <string>

#include "tests/faults/whole_session.h"

namespace faults {

struct Tally {
  std::size_t cases = 0;
  std::array<std::size_t, kOutcomes> by_outcome{};

  void add(Outcome outcome) {
    ++cases;
    ++by_outcome.at(static_cast<std::size_t>(outcome));
  }
  std::string text() const;  // "120 cases: 20 served, 100 exception"
};

}  // namespace faults
