// How VTK, and files for it, have the elements that the host knows.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "host/element_slots.h"

namespace host {

// VTK's number of a shape's cell type.
constexpr std::uint8_t vtk_cell_type(const ElementShape& shape) {
  switch (shape.nodes) {
    case 3:
      return 5;
    case 4:
      return shape.dimension == 2 ? 9 : 10;
    case 5:
      return 14;
    case 6:
      return 13;
    default:
      return 12;
  }
}

// In a prism of VTK up to 9.6 the triangle 0-1-2 is counter-clockwise seen from outside, in the host's seen
// from the other triangle. The other shapes have their corners in the same order.
inline constexpr int kPrismNodes = 6;
inline constexpr std::array<std::size_t, kPrismNodes> kVtkPrismCorners = {0, 2, 1, 3, 5, 4};

}  // namespace host
