// The host's element-type slots: which shape a slot stands for and how many nodes such an element has.
#pragma once

#include <array>
#include <string_view>

namespace host {

// Slots of a part's element counts; every shape has a ghost variant beside it, and many shapes are not used
// here.
inline constexpr int kElementSlots = 34;

struct ElementShape {
  int slot;
  std::string_view name;
  int nodes;      // per element
  int dimension;  // 2 for faces, 3 for cells
};

// The shapes that this host knows, in the order of their slots.
inline constexpr std::array<ElementShape, 6> kElementShapes = {{
    {6, "tri", 3, 2},
    {10, "quad", 4, 2},
    {14, "tet", 4, 3},
    {18, "pyramid", 5, 3},
    {22, "prism", 6, 3},
    {26, "hex", 8, 3},
}};

// The shape of a slot, or null for a slot that this host does not know.
constexpr const ElementShape* shape_of_slot(int slot) {
  for (const ElementShape& shape : kElementShapes) {
    if (shape.slot == slot) return &shape;
  }
  return nullptr;
}

}  // namespace host
