// The axis-parallel box around points.
#pragma once

#include <array>
#include <optional>

#include "host/dataset.h"

namespace host {

struct BoundingBox {
  std::array<float, 3> lowest{};
  std::array<float, 3> highest{};

  bool operator==(const BoundingBox&) const = default;
};

// The box around a part's nodes; none for a part without nodes. NaN coordinates are
// ignored.
std::optional<BoundingBox> bounding_box(const Coordinates& coordinates);

}  // namespace host
