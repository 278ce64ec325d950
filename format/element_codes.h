// Type codes of elements and surface faces, and the number of nodes of each.
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

using Table = std::array<signed char, 256>;

constexpr Table kElementNodes = [] {
  Table nodes = {};
  nodes[kTriangle] = 3;
  nodes[kQuadrilateral] = 4;
  nodes[kTetrahedron] = 4;
  nodes[kPyramid] = 5;
  nodes[kPrism] = 6;
  nodes[kHexahedron] = 8;
  return nodes;
}();

constexpr Table kFaceNodes = [] {
  Table nodes = {};
  nodes[kLineFace] = 2;
  nodes[kTriangleFace] = 3;
  nodes[kQuadrilateralFace] = 4;
  return nodes;
}();

constexpr int look_up(const Table& table, int code) {
  const auto index = static_cast<unsigned>(code);
  return index < table.size() ? table[index] : 0;
}

}  // namespace element_codes_detail

// Number of nodes of an element (face) of this code; 0 for unknown codes. Table lookups, without a branch per
// shape.
constexpr int nodes_of_element(int code) {
  return element_codes_detail::look_up(element_codes_detail::kElementNodes, code);
}
constexpr int nodes_of_face(int code) {
  return element_codes_detail::look_up(element_codes_detail::kFaceNodes, code);
}

}  // namespace fld
