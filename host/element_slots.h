// The element types of the host interface: the shape of each slot and the number of its nodes.
#pragma once

#include <array>
#include <string_view>

namespace host {

// The number of slots in a part's element counts. Each shape also has a ghost variant, and many shapes are
// not used here.
inline constexpr int kElementSlots = 34;

struct ElementShape {
  int slot;
  std::string_view name;
  int nodes;      // per element
  int dimension;  // 2 for faces, 3 for cells
};

// The supported shapes, in the order of their slots.
inline constexpr std::array<ElementShape, 6> kElementShapes = {{
    {6, "tri", 3, 2},
    {10, "quad", 4, 2},
    {14, "tet", 4, 3},
    {18, "pyramid", 5, 3},
    {22, "prism", 6, 3},
    {26, "hex", 8, 3},
}};

// The shape of a slot, or null if it is not supported.
constexpr const ElementShape* shape_of_slot(int slot) {
  for (const ElementShape& shape : kElementShapes) {
    if (shape.slot == slot) return &shape;
  }
  return nullptr;
}

}  // namespace host
