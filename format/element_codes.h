// The type codes of elements and of surface faces, and how many nodes each shape has.
#pragma once

#include <array>

namespace fld {

// Elements of a region set.
constexpr int kTriangle = 23;
constexpr int kQuadrilateral = 24;
constexpr int kTetrahedron = 34;
constexpr int kPyramid = 35;
constexpr int kPrism = 36;
constexpr int kHexahedron = 38;
// Faces of a surface region.
constexpr int kLineFace = 122;
constexpr int kTriangleFace = 133;
constexpr int kQuadrilateralFace = 134;

namespace element_codes_detail {

constexpr int kTableSize = 256;

constexpr std::array<signed char, kTableSize> make_node_counts() {
  std::array<signed char, kTableSize> counts = {};
  counts[kTriangle] = counts[kTriangleFace] = 3;
  counts[kQuadrilateral] = counts[kQuadrilateralFace] = counts[kTetrahedron] = 4;
  counts[kPyramid] = 5;
  counts[kPrism] = 6;
  counts[kHexahedron] = 8;
  counts[kLineFace] = 2;
  return counts;
}
inline constexpr auto kNodeCounts = make_node_counts();

}  // namespace element_codes_detail

// Nodes of an element or face of this code; 0 for a code that names no shape. The codes of elements and of
// faces are distinct, so one table serves both; it has no branch for the shape.
constexpr int nodes_of_code(int code) {
  const auto index = static_cast<unsigned>(code);
  return index < element_codes_detail::kTableSize ? element_codes_detail::kNodeCounts[index] : 0;
}

}  // namespace fld
