#include "testkit/mesh_check.h"

#include <algorithm>
#include <array>
#include <map>
#include <span>

#include "testkit/element_faces.h"
#include "testkit/vec3.h"

namespace testkit {
namespace {

Vec3 minus(const Vec3& a, const Vec3& b) {
  return {a[0] - b[0], a[1] - b[1], a[2] - b[2]};
}

// Six times the volume of the tetrahedron a, b, c, d.
double determinant(const Vec3& a, const Vec3& b, const Vec3& c, const Vec3& d) {
  const Vec3 u = minus(b, a);
  const Vec3 v = minus(c, a);
  const Vec3 w = minus(d, a);
  return (u[1] * v[2] - u[2] * v[1]) * w[0] + (u[2] * v[0] - u[0] * v[2]) * w[1] +
         (u[0] * v[1] - u[1] * v[0]) * w[2];
}

Vec3 point_of(const Nodes& nodes, std::int32_t node) {
  const auto at = static_cast<std::size_t>(node);
  return {nodes.x.values()[at], nodes.y.values()[at], nodes.z.values()[at]};
}

double element_volume(const Nodes& nodes, std::int32_t code, std::span<const std::int32_t> corners) {
  const Vec3 origin = point_of(nodes, corners[0]);
  double sum = 0.0;
  for (const FaceCorners& local : faces_of(code)) {
    const Face face = face_of(corners, local, 0);
    const std::size_t count = face.corner_count();
    Vec3 middle{};
    for (std::size_t c = 0; c < count; ++c) {
      const Vec3 point = point_of(nodes, face.corners[c]);
      for (std::size_t d = 0; d < 3; ++d) middle[d] += point[d] / static_cast<double>(count);
    }
    for (std::size_t c = 0; c < count; ++c) {
      sum += determinant(origin, middle, point_of(nodes, face.corners[c]),
                         point_of(nodes, face.corners[(c + 1) % count]));
    }
  }
  return sum / 6.0;
}

// Per corner, its neighbours along its three edges, in an order that makes the four a positive tetrahedron.
using CornerEdges = std::array<int, 4>;
constexpr std::array<CornerEdges, 1> kTetrahedronCorners{{{0, 1, 2, 3}}};
constexpr std::array<CornerEdges, 4> kPyramidCorners{
    {{0, 1, 3, 4}, {1, 2, 0, 4}, {2, 3, 1, 4}, {3, 0, 2, 4}}};
constexpr std::array<CornerEdges, 6> kPrismCorners{
    {{0, 1, 2, 3}, {1, 2, 0, 4}, {2, 0, 1, 5}, {3, 5, 4, 0}, {4, 3, 5, 1}, {5, 4, 3, 2}}};
constexpr std::array<CornerEdges, 8> kHexahedronCorners{{{0, 1, 3, 4},
                                                         {1, 2, 0, 5},
                                                         {2, 3, 1, 6},
                                                         {3, 0, 2, 7},
                                                         {4, 7, 5, 0},
                                                         {5, 4, 6, 1},
                                                         {6, 5, 7, 2},
                                                         {7, 6, 4, 3}}};

std::span<const CornerEdges> corners_with_edges(std::int32_t code) {
  switch (code) {
    case kTetrahedron:
      return kTetrahedronCorners;
    case kPyramid:
      return kPyramidCorners;
    case kPrism:
      return kPrismCorners;
    case kHexahedron:
      return kHexahedronCorners;
    default:
      return {};
  }
}

class FaultFinder {
 public:
  explicit FaultFinder(const Mesh& mesh) : mesh_(mesh) {}

  std::vector<std::string> find() {
    if (!check_numbers()) return faults_;
    check_corners();
    const std::vector<Face> faces = all_faces(mesh_.elements);
    const auto by_ring = meetings(faces);
    check_matches(faces, by_ring);
    check_surfaces(faces, by_ring);
    return faults_;
  }

 private:
  void fault(const std::string& text) { faults_.push_back(text); }

  bool check_numbers() {
    std::int64_t needed = 0;
    for (const std::int32_t code : mesh_.elements.type.values()) {
      if (faces_of(code).empty()) fault("element of code " + std::to_string(code));
      needed += corner_count(code);
    }
    if (needed != mesh_.elements.conn.size()) fault("connectivity does not fit the types");
    std::vector<char> used(static_cast<std::size_t>(mesh_.nodes.size()), 0);
    for (const std::int32_t node : mesh_.elements.conn.values()) {
      if (node < 0 || node >= mesh_.nodes.size()) {
        fault("node " + std::to_string(node) + " does not exist");
      } else {
        used[static_cast<std::size_t>(node)] = 1;
      }
    }
    const auto unused = std::count(used.begin(), used.end(), char{0});
    if (unused > 0) fault(std::to_string(unused) + " nodes without element");
    return faults_.empty();
  }

  void check_corners() {
    for_each_element(mesh_.elements, [&](std::int32_t number, std::int32_t code,
                                         std::span<const std::int32_t> nodes) {
      for (const CornerEdges& at : corners_with_edges(code)) {
        std::array<Vec3, 4> points;
        for (std::size_t c = 0; c < 4; ++c)
          points[c] = point_of(mesh_.nodes, nodes[static_cast<std::size_t>(at[c])]);
        if (determinant(points[0], points[1], points[2], points[3]) <= 0.0) {
          fault("element " + std::to_string(number) + " is not positive at corner " + std::to_string(at[0]));
        }
      }
    });
  }

  void check_matches(const std::vector<Face>& faces,
                     const std::map<FaceRing, std::vector<std::size_t>>& by_ring) {
    for (const auto& [ring, users] : by_ring) {
      const std::string where = " a face of element " + std::to_string(faces[users[0]].element);
      if (users.size() > 2) fault("more than two elements have" + where);
      if (users.size() == 2 && turns_with_ring(faces[users[0]]) == turns_with_ring(faces[users[1]])) {
        fault("two elements turn the same way" + where);
      }
    }
  }

  void check_surfaces(const std::vector<Face>& faces,
                      const std::map<FaceRing, std::vector<std::size_t>>& by_ring) {
    std::map<FaceRing, int> in_surfaces;
    for (const Surface& surface : mesh_.surfaces) {
      const bool is_plain = !surface.name.starts_with('&') && !surface.name.starts_with('@');
      std::span<const std::int32_t> rest(surface.node.values());
      for (std::size_t f = 0; f < surface.type.values().size(); ++f) {
        Face face;
        face.code = surface.type.values()[f];
        face.element = surface.link.values()[f];
        const auto count = static_cast<std::size_t>(corner_count(face.code));
        std::copy_n(rest.begin(), count, face.corners.begin());
        rest = rest.subspan(count);
        check_link(surface, f, face, faces, by_ring);
        if (is_plain) ++in_surfaces[ring_of(face)];
      }
    }
    for (const auto& [ring, users] : by_ring) {
      const auto found = in_surfaces.find(ring);
      const int times = found == in_surfaces.end() ? 0 : found->second;
      if (users.size() == 1 && times != 1) {
        fault("an outer face of element " + std::to_string(faces[users[0]].element) + " is in " +
              std::to_string(times) + " surfaces");
      }
    }
  }

  void check_link(const Surface& surface, std::size_t position, const Face& face,
                  const std::vector<Face>& faces,
                  const std::map<FaceRing, std::vector<std::size_t>>& by_ring) {
    const std::string where = " face " + std::to_string(position) + " of surface " + surface.name;
    const auto found = by_ring.find(ring_of(face));
    if (found == by_ring.end()) {
      fault("no element has" + where);
      return;
    }
    if (face.element < 0) return;
    for (const std::size_t user : found->second) {
      if (faces[user].element == face.element && turns_with_ring(faces[user]) == turns_with_ring(face))
        return;
    }
    fault("the linked element does not have" + where);
  }

  const Mesh& mesh_;
  std::vector<std::string> faults_;
};

}  // namespace

std::vector<double> volumes(const Mesh& mesh) {
  std::vector<double> result;
  for_each_element(mesh.elements,
                   [&](std::int32_t, std::int32_t code, std::span<const std::int32_t> corners) {
                     result.push_back(element_volume(mesh.nodes, code, corners));
                   });
  return result;
}

std::vector<std::string> faults(const Mesh& mesh) {
  return FaultFinder(mesh).find();
}

}  // namespace testkit
