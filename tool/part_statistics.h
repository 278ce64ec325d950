// The values of a variable on a part in numbers: range, mean, deviation and counts per component.
#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "host/session.h"
#include "host/value_statistics.h"
#include "tool/histogram.h"
#include "tool/quantity.h"

namespace tool {

// Where a value is.
struct ValuePlace {
  std::size_t index = 0;                            // of the node or element, from 0
  std::optional<std::array<float, 3>> coordinates;  // of the node, or the element's centre
};

struct ComponentStatistics {
  std::string component;   // "x", "y", "z" or "magnitude"; empty for a scalar
  std::size_t values = 0;  // all of them, one per node or element
  host::ValueStatistics statistics;
  double deviation = 0;  // standard deviation of the numbers, divided by their count
  ValuePlace minimum;    // the first place that has it; meaningless without numbers, as the next one
  ValuePlace maximum;
  Histogram histogram;  // without intervals unless asked for
};

struct PartStatistics {
  int part = 0;
  host::Availability availability = host::Availability::given;
  host::PartValues failed;                      // the reason and the file, if the values could not be read
  std::vector<ComponentStatistics> components;  // empty unless availability is `given`
};

// Of a variable on a part at the session's step; of a vector the chosen component, or all of them and the
// magnitude. With `intervals` above 0 every component gets a histogram. The magnitude of a vector is
// undefined, or not a number, where one of its components is. Places have no coordinates yet.
PartStatistics part_statistics(QuantityValues& source, const Quantity& chosen, const host::Part& part,
                               std::size_t intervals);

// Adds the coordinates to the places in all of these, which are about one part of the session's step. Reads
// the part's coordinates, and its elements if a variable is given per element. Throws host::Error.
void locate(host::Session& session, int part,
            const std::vector<std::pair<host::Location, PartStatistics*>>& statistics);

}  // namespace tool
