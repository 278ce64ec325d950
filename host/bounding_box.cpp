#include "host/bounding_box.h"

#include "host/value_statistics.h"

namespace host {

std::optional<BoundingBox> bounding_box(const Coordinates& coordinates) {
  BoundingBox box;
  for (std::size_t axis = 0; axis < 3; ++axis) {
    ValueStatistics range;
    range.add(coordinates.axes[axis].values());
    if (!range.has_numbers()) return std::nullopt;
    box.lowest[axis] = range.minimum;
    box.highest[axis] = range.maximum;
  }
  return box;
}

}  // namespace host
