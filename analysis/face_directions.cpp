#include "analysis/face_directions.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <span>

#include "analysis/point_table.h"
#include "analysis/vec3.h"

namespace analysis {
namespace {

constexpr std::int32_t kNone = PointTable::kNone;

// A face as the places of its corners, ascending; the last one of a triangle is kNone and stands first.
using FaceKey = std::array<std::int32_t, 4>;

struct ListedFace {
  FaceKey key{};
  std::size_t number = 0;  // through all surfaces
};

// The corners of a solid element's faces, -1 behind those of a triangle. In which order does not matter.
using LocalFace = std::array<int, 4>;
constexpr std::array<LocalFace, 4> kTetrahedronFaces = {
    {{0, 1, 2, -1}, {0, 1, 3, -1}, {1, 2, 3, -1}, {0, 2, 3, -1}}};
constexpr std::array<LocalFace, 5> kPyramidFaces = {
    {{0, 1, 2, 3}, {0, 1, 4, -1}, {1, 2, 4, -1}, {2, 3, 4, -1}, {3, 0, 4, -1}}};
constexpr std::array<LocalFace, 5> kPrismFaces = {
    {{0, 1, 2, -1}, {3, 4, 5, -1}, {0, 1, 4, 3}, {1, 2, 5, 4}, {2, 0, 3, 5}}};
constexpr std::array<LocalFace, 6> kHexahedronFaces = {
    {{0, 1, 2, 3}, {4, 5, 6, 7}, {0, 1, 5, 4}, {1, 2, 6, 5}, {2, 3, 7, 6}, {3, 0, 4, 7}}};

std::span<const LocalFace> faces_of(const host::ElementShape& shape) {
  if (shape.dimension != 3) return {};
  switch (shape.nodes) {
    case 4:
      return kTetrahedronFaces;
    case 5:
      return kPyramidFaces;
    case 6:
      return kPrismFaces;
    default:
      return kHexahedronFaces;
  }
}

Vec3 place(const host::Coordinates& nodes, std::size_t node) {
  return {static_cast<double>(nodes.x()[node]), static_cast<double>(nodes.y()[node]),
          static_cast<double>(nodes.z()[node])};
}

// The faces of several surfaces, their corners numbered through all of them.
class Faces {
 public:
  Faces(host::Session& session, const std::vector<int>& surfaces) {
    std::size_t nodes = 0;
    for (const int surface : surfaces) nodes += static_cast<std::size_t>(session.part(surface).nodes);
    for (host::HostArray& axis : nodes_.axes) axis = host::HostArray(nodes, 0);
    std::size_t first = 0;
    for (const int surface : surfaces) add(session, surface, first);
  }

  const host::Coordinates& nodes() const { return nodes_; }
  std::size_t size() const { return corners_.size(); }
  // How many faces the surfaces have, in their order.
  const std::vector<std::size_t>& counts() const { return counts_; }

  // Replaces each corner by the first one at its place, and sorts.
  void list(const PointTable& table) {
    for (std::size_t i = 0; i < corners_.size(); ++i) {
      ListedFace face{{kNone, kNone, kNone, kNone}, i};
      for (std::size_t c = 0; c < 4; ++c) {
        if (corners_[i][c] == kNone) continue;
        const auto node = static_cast<std::size_t>(corners_[i][c]);
        face.key[c] = table.find(nodes_.x()[node], nodes_.y()[node], nodes_.z()[node]);
      }
      std::sort(face.key.begin(), face.key.end());
      listed_.push_back(face);
    }
    std::sort(listed_.begin(), listed_.end(),
              [](const ListedFace& a, const ListedFace& b) { return a.key < b.key; });
  }

  // Those with these places as corners.
  std::span<const ListedFace> with(const FaceKey& key) const {
    const auto first =
        std::lower_bound(listed_.begin(), listed_.end(), key,
                         [](const ListedFace& face, const FaceKey& k) { return face.key < k; });
    auto last = first;
    while (last != listed_.end() && last->key == key) ++last;
    return {first, last};
  }

  // Whether the corners turn counter-clockwise seen from a point.
  bool turns_towards(std::size_t face, const Vec3& from) const {
    const FaceKey& corners = corners_[face];
    const std::size_t count = corners[3] == kNone ? 3 : 4;
    std::array<Vec3, 4> at{};
    Vec3 sum{};
    for (std::size_t c = 0; c < count; ++c) {
      at[c] = place(nodes_, static_cast<std::size_t>(corners[c]));
      sum += at[c];
    }
    const Vec3 normal =
        count == 3 ? cross(at[1] - at[0], at[2] - at[0]) : cross(at[2] - at[0], at[3] - at[1]);
    return dot(normal, from - (1.0 / static_cast<double>(count)) * sum) > 0;
  }

 private:
  void add(host::Session& session, int surface, std::size_t& first) {
    const host::Coordinates nodes = session.coordinates(surface);
    for (std::size_t axis = 0; axis < 3; ++axis) {
      const std::span<const float> from = nodes.axes[axis].values();
      std::copy(from.begin(), from.end(), nodes_.axes[axis].entries() + 1 + first);
    }
    std::size_t count = 0;
    for (const host::ElementBlock& block : session.elements(surface)) {
      for (std::size_t i = 0; i < block.size(); ++i) {
        FaceKey corners = {kNone, kNone, kNone, kNone};
        const std::span<const int> element = block.element(i);
        for (std::size_t c = 0; c < std::min<std::size_t>(element.size(), corners.size()); ++c)
          corners[c] = element[c] - 1 + static_cast<std::int32_t>(first);
        corners_.push_back(corners);
      }
      count += block.size();
    }
    counts_.push_back(count);
    first += nodes.size();
  }

  host::Coordinates nodes_;
  std::vector<FaceKey> corners_;  // in the order of the file
  std::vector<std::size_t> counts_;
  std::vector<ListedFace> listed_;
};

// What is known about a face: how many elements have it, and whether it points away from the first.
struct Owner {
  std::uint8_t elements = 0;
  std::int8_t sign = 1;
};

class OwnerSearch {
 public:
  OwnerSearch(const Faces& faces, std::vector<Owner>& owners) : faces_(faces), owners_(owners) {}

  // Looks at all elements of a whole mesh. `labels` are the places of its nodes, kNone where no face is.
  void look_at(const host::Coordinates& nodes, const host::ElementBlock& block,
               const std::vector<std::int32_t>& labels) {
    const std::span<const LocalFace> locals = faces_of(block.shape);
    const std::size_t count = block.size();
    for (std::size_t i = 0; i < count; ++i) {
      const std::span<const int> element = block.element(i);
      int marked = 0;
      for (const int node : element) marked += labels[static_cast<std::size_t>(node) - 1] != kNone ? 1 : 0;
      if (marked < 3) continue;
      for (const LocalFace& local : locals) look_at_face(nodes, element, local, labels);
    }
  }

 private:
  void look_at_face(const host::Coordinates& nodes, std::span<const int> element, const LocalFace& local,
                    const std::vector<std::int32_t>& labels) {
    FaceKey key = {kNone, kNone, kNone, kNone};
    for (std::size_t c = 0; c < 4; ++c) {
      if (local[c] < 0) continue;
      const int node = element[static_cast<std::size_t>(local[c])];
      key[c] = labels[static_cast<std::size_t>(node) - 1];
      if (key[c] == kNone) return;
    }
    std::sort(key.begin(), key.end());
    const std::span<const ListedFace> found = faces_.with(key);
    if (found.empty()) return;
    Vec3 centre{};
    for (const int node : element)
      centre +=
          (1.0 / static_cast<double>(element.size())) * place(nodes, static_cast<std::size_t>(node) - 1);
    for (const ListedFace& face : found) {
      Owner& owner = owners_[face.number];
      if (owner.elements == 0) owner.sign = faces_.turns_towards(face.number, centre) ? -1 : 1;
      if (owner.elements < 2) ++owner.elements;
    }
  }

  const Faces& faces_;
  std::vector<Owner>& owners_;
};

FaceDirections directions_of(std::span<const Owner> owners) {
  FaceDirections directions;
  for (const Owner& owner : owners) {
    const std::int8_t sign = owner.elements == 1 ? owner.sign : std::int8_t{1};
    directions.signs.push_back(sign);
    directions.turned += sign < 0 ? 1 : 0;
    directions.inside += owner.elements > 1 ? 1 : 0;
    directions.without_element += owner.elements == 0 ? 1 : 0;
  }
  return directions;
}

}  // namespace

std::map<int, FaceDirections> find_face_directions(host::Session& session, const std::vector<int>& surfaces,
                                                   const IsCylindrical& is_cylindrical) {
  Faces faces(session, surfaces);
  const PointTable table(faces.nodes());
  faces.list(table);
  std::vector<Owner> owners(faces.size());
  OwnerSearch search(faces, owners);
  for (const int whole : whole_parts(session)) {
    if (faces.size() == 0) break;
    const host::Coordinates nodes = cartesian_coordinates(session, whole, is_cylindrical);
    const std::vector<std::int32_t> labels = table.find_all(nodes);
    for (const host::ElementBlock& block : session.elements(whole)) search.look_at(nodes, block, labels);
  }
  std::map<int, FaceDirections> directions;
  std::size_t first = 0;
  for (std::size_t i = 0; i < surfaces.size(); ++i) {
    directions.emplace(surfaces[i], directions_of(std::span(owners).subspan(first, faces.counts()[i])));
    first += faces.counts()[i];
  }
  return directions;
}

}  // namespace analysis
