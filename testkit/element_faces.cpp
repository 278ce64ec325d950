#include "testkit/element_faces.h"

#include <algorithm>

namespace testkit {
namespace {

constexpr std::array<FaceCorners, 4> kTetrahedronFaces{
    {{0, 2, 1, -1}, {0, 1, 3, -1}, {1, 2, 3, -1}, {0, 3, 2, -1}}};
constexpr std::array<FaceCorners, 5> kPyramidFaces{
    {{0, 3, 2, 1}, {0, 1, 4, -1}, {1, 2, 4, -1}, {2, 3, 4, -1}, {3, 0, 4, -1}}};
constexpr std::array<FaceCorners, 5> kPrismFaces{
    {{0, 2, 1, -1}, {3, 4, 5, -1}, {0, 1, 4, 3}, {1, 2, 5, 4}, {2, 0, 3, 5}}};
constexpr std::array<FaceCorners, 6> kHexahedronFaces{
    {{0, 3, 2, 1}, {4, 5, 6, 7}, {0, 1, 5, 4}, {1, 2, 6, 5}, {2, 3, 7, 6}, {3, 0, 4, 7}}};

// Position of the smallest corner.
std::size_t start_of_ring(const Face& face) {
  const auto end = face.corners.begin() + static_cast<std::ptrdiff_t>(face.corner_count());
  return static_cast<std::size_t>(std::min_element(face.corners.begin(), end) - face.corners.begin());
}

}  // namespace

std::span<const FaceCorners> faces_of(std::int32_t element_code) {
  switch (element_code) {
    case kTetrahedron:
      return kTetrahedronFaces;
    case kPyramid:
      return kPyramidFaces;
    case kPrism:
      return kPrismFaces;
    case kHexahedron:
      return kHexahedronFaces;
    default:
      return {};
  }
}

Face face_of(std::span<const std::int32_t> corners, const FaceCorners& local, std::int32_t element) {
  Face face;
  face.code = local[3] < 0 ? kTriangleFace : kQuadrilateralFace;
  face.element = element;
  for (std::size_t c = 0; c < face.corner_count(); ++c) {
    face.corners[c] = corners[static_cast<std::size_t>(local[c])];
  }
  return face;
}

bool turns_with_ring(const Face& face) {
  const std::size_t count = face.corner_count();
  const std::size_t start = start_of_ring(face);
  return face.corners[(start + 1) % count] < face.corners[(start + count - 1) % count];
}

FaceRing ring_of(const Face& face) {
  FaceRing ring{-1, -1, -1, -1};
  const std::size_t count = face.corner_count();
  const std::size_t start = start_of_ring(face);
  const std::size_t step = turns_with_ring(face) ? 1 : count - 1;
  for (std::size_t c = 0; c < count; ++c) ring[c] = face.corners[(start + c * step) % count];
  return ring;
}

std::vector<Face> all_faces(const Elements& elements) {
  std::vector<Face> faces;
  for_each_element(elements,
                   [&](std::int32_t number, std::int32_t code, std::span<const std::int32_t> corners) {
                     for (const FaceCorners& local : faces_of(code))
                       faces.push_back(face_of(corners, local, number));
                   });
  return faces;
}

std::map<FaceRing, std::vector<std::size_t>> meetings(const std::vector<Face>& faces) {
  std::map<FaceRing, std::vector<std::size_t>> by_ring;
  for (std::size_t f = 0; f < faces.size(); ++f) by_ring[ring_of(faces[f])].push_back(f);
  return by_ring;
}

std::vector<Face> outer_faces(const Elements& elements) {
  const std::vector<Face> faces = all_faces(elements);
  const auto by_ring = meetings(faces);
  std::vector<Face> outer;
  for (const Face& face : faces) {
    if (by_ring.at(ring_of(face)).size() == 1) outer.push_back(face);
  }
  return outer;
}

void add_face(Surface& surface, const Face& face) {
  const auto end = face.corners.begin() + static_cast<std::ptrdiff_t>(face.corner_count());
  surface.add(face.code, {face.corners.begin(), end}, face.element);
}

}  // namespace testkit
