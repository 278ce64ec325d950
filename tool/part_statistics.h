// What the values of a variable on a part are like: range, mean and counts per component.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "host/session.h"
#include "host/value_statistics.h"
#include "tool/histogram.h"

namespace tool {

struct ComponentStatistics {
  std::string component;   // "x", "y", "z" or "magnitude"; empty for a scalar
  std::size_t values = 0;  // all of them, one per node or element
  host::ValueStatistics statistics;
  Histogram histogram;  // without intervals unless asked for
};

struct PartStatistics {
  int part = 0;
  host::Availability availability = host::Availability::given;
  std::string reason;                           // why the values could not be read
  std::vector<ComponentStatistics> components;  // empty unless availability is `given`
};

// Of a variable on a part at the session's step. With `intervals` above 0 every component gets a histogram.
// The magnitude of a vector is undefined, or no number, where one of its components is.
PartStatistics part_statistics(host::Session& session, const host::Variable& variable, const host::Part& part,
                               std::size_t intervals);

}  // namespace tool
