// The faces of elements, and which faces of a mesh coincide.
#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <span>
#include <vector>

#include "testkit/mesh.h"

namespace testkit {

// A face, counter-clockwise seen from outside its element.
struct Face {
  std::int32_t code = 0;  // kTriangleFace or kQuadrilateralFace
  std::array<std::int32_t, 4> corners{-1, -1, -1, -1};
  std::int32_t element = -1;

  std::size_t corner_count() const { return code == kTriangleFace ? 3 : 4; }
};

// A face of an element: the positions of its corners in the element's list; the last is -1 for a triangle.
using FaceCorners = std::array<int, 4>;

// The faces of a solid element, none for any other code.
std::span<const FaceCorners> faces_of(std::int32_t element_code);

// The face with the node numbers of an element's corners.
Face face_of(std::span<const std::int32_t> corners, const FaceCorners& local, std::int32_t element);

// Calls visit(number, code, corners) for every element.
template <class Visit>
void for_each_element(const Elements& elements, Visit visit) {
  std::span<const std::int32_t> rest(elements.conn.values());
  std::int32_t number = 0;
  for (const std::int32_t code : elements.type.values()) {
    const auto count = static_cast<std::size_t>(corner_count(code));
    visit(number++, code, rest.first(count));
    rest = rest.subspan(count);
  }
}

// The corners of a face, rotated and possibly reversed to start with the smallest node and continue with its
// smaller neighbour: the same for both elements that share the face.
using FaceRing = std::array<std::int32_t, 4>;
FaceRing ring_of(const Face& face);

// Whether the face has the direction of its ring. This differs for two elements that share a face.
bool turns_with_ring(const Face& face);

// The faces of all elements, in element order.
std::vector<Face> all_faces(const Elements& elements);

// Per face of the mesh, the positions in that list: one for an outer face, two for a shared one.
std::map<FaceRing, std::vector<std::size_t>> meetings(const std::vector<Face>& faces);

// The faces of a single element, in element order.
std::vector<Face> outer_faces(const Elements& elements);

void add_face(Surface& surface, const Face& face);

}  // namespace testkit
