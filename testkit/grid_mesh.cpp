#include "testkit/grid_mesh.h"

#include <algorithm>
#include <span>
#include <stdexcept>
#include <string>

namespace testkit {
namespace {

// Corners of a cell are numbered like those of a hexahedron; this is the centre.
constexpr int kMiddle = 8;
constexpr std::array<CellIndex, 8> kCornerSteps{
    {{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}, {0, 0, 1}, {1, 0, 1}, {1, 1, 1}, {0, 1, 1}}};
constexpr std::array<CellIndex, 6> kSideSteps{
    {{-1, 0, 0}, {1, 0, 0}, {0, -1, 0}, {0, 1, 0}, {0, 0, -1}, {0, 0, 1}}};

// The quadrilateral of each side, counter-clockwise seen from outside, from its lowest corner; the third
// corner is the highest.
constexpr std::array<std::array<int, 4>, 6> kSideCorners{
    {{0, 4, 7, 3}, {1, 2, 6, 5}, {0, 1, 5, 4}, {3, 7, 6, 2}, {0, 3, 2, 1}, {4, 5, 6, 7}}};

constexpr std::array<std::array<int, 4>, 6> kTetrahedraCorners{
    {{0, 1, 2, 6}, {0, 5, 1, 6}, {0, 2, 3, 6}, {0, 3, 7, 6}, {0, 4, 5, 6}, {0, 7, 4, 6}}};

using LocalCorners = std::vector<int>;

bool is_along_k(std::size_t side) {
  return side >= 4;
}

// Bits of the sides that a corner lies on.
unsigned sides_of_corner(int corner, bool at_axis) {
  if (corner == kMiddle) return 0;
  const CellIndex& step = kCornerSteps[static_cast<std::size_t>(corner)];
  unsigned sides = 0;
  for (unsigned axis = 0; axis < 3; ++axis) sides |= 1U << (2 * axis + static_cast<unsigned>(step[axis]));
  // A corner on the axis lies on both of the sides that meet there.
  if (at_axis && step[0] == 0) sides |= (1U << 2U) | (1U << 3U);
  return sides;
}

class GridMesher {
 public:
  explicit GridMesher(const Grid& grid) : grid_(grid) {
    points_ = {grid.cells[0] + 1, grid.closes_along_j ? grid.cells[1] : grid.cells[1] + 1, grid.cells[2] + 1};
  }

  GridMesh make() {
    find_kinds();
    number_points();
    for_each_cell([this](const CellIndex& cell) { make_cell(cell); });
    return std::move(mesh_);
  }

 private:
  template <class Visit>
  void for_each_cell(Visit visit) const {
    for (int k = 0; k < grid_.cells[2]; ++k) {
      for (int j = 0; j < grid_.cells[1]; ++j) {
        for (int i = 0; i < grid_.cells[0]; ++i) visit(CellIndex{i, j, k});
      }
    }
  }

  bool at_axis(const CellIndex& cell) const { return grid_.has_axis && cell[0] == 0; }

  static std::size_t position(const CellIndex& index, const CellIndex& extent) {
    return (static_cast<std::size_t>(index[2]) * static_cast<std::size_t>(extent[1]) +
            static_cast<std::size_t>(index[1])) *
               static_cast<std::size_t>(extent[0]) +
           static_cast<std::size_t>(index[0]);
  }

  CellKind neighbour(const CellIndex& cell, std::size_t side) const {
    CellIndex other = cell;
    for (std::size_t axis = 0; axis < 3; ++axis) other[axis] += kSideSteps[side][axis];
    if (grid_.closes_along_j) other[1] = (other[1] + grid_.cells[1]) % grid_.cells[1];
    for (std::size_t axis = 0; axis < 3; ++axis) {
      if (other[axis] < 0 || other[axis] >= grid_.cells[axis]) return CellKind::kNone;
    }
    return kinds_[position(other, grid_.cells)];
  }

  // Whether a cell of this kind splits its face on this side into two triangles.
  static bool cuts(CellKind kind, std::size_t side) {
    return kind == CellKind::kTetrahedra || (kind == CellKind::kPrisms && is_along_k(side));
  }

  void find_kinds() {
    for_each_cell([this](const CellIndex& cell) {
      const CellKind kind = grid_.kind(cell);
      kinds_.push_back(at_axis(cell) && kind == CellKind::kPrisms ? CellKind::kHexahedron : kind);
    });
    std::vector<CellKind> result = kinds_;
    for_each_cell([&](const CellIndex& cell) {
      CellKind& kind = result[position(cell, grid_.cells)];
      if (kind != CellKind::kHexahedron && kind != CellKind::kPrisms) return;
      for (std::size_t side = 0; side < 6; ++side) {
        if (cuts(neighbour(cell, side), side) && !cuts(kind, side)) kind = CellKind::kPyramids;
      }
    });
    kinds_ = std::move(result);
    for_each_cell([this](const CellIndex& cell) {
      const CellKind kind = kinds_[position(cell, grid_.cells)];
      if (at_axis(cell) && kind != CellKind::kHexahedron && kind != CellKind::kNone) {
        throw std::invalid_argument("a cell at the axis can only be one prism");
      }
    });
  }

  CellIndex corner_point(const CellIndex& cell, std::size_t corner) const {
    CellIndex point = cell;
    for (std::size_t axis = 0; axis < 3; ++axis) point[axis] += kCornerSteps[corner][axis];
    if (grid_.closes_along_j) point[1] %= grid_.cells[1];
    if (grid_.has_axis && point[0] == 0) point[1] = 0;
    return point;
  }

  void number_points() {
    number_.assign(position({0, 0, points_[2]}, points_), -1);
    for_each_cell([this](const CellIndex& cell) {
      if (kinds_[position(cell, grid_.cells)] == CellKind::kNone) return;
      for (std::size_t corner = 0; corner < 8; ++corner)
        number_[position(corner_point(cell, corner), points_)] = 0;
    });
    std::size_t at = 0;
    for (int k = 0; k < points_[2]; ++k) {
      for (int j = 0; j < points_[1]; ++j) {
        for (int i = 0; i < points_[0]; ++i, ++at) {
          if (number_[at] < 0) continue;
          const Vec3 point = grid_.point({i, j, k});
          number_[at] = mesh_.nodes.add(point[0], point[1], point[2]);
        }
      }
    }
  }

  void make_cell(const CellIndex& cell) {
    const CellKind kind = kinds_[position(cell, grid_.cells)];
    if (kind == CellKind::kNone) return;
    cell_ = cell;
    for (std::size_t corner = 0; corner < 8; ++corner) {
      node_[corner] = number_[position(corner_point(cell, corner), points_)];
    }
    if (at_axis(cell)) {
      add(kPrism, {0, 1, 2, 4, 5, 6});
    } else if (kind == CellKind::kHexahedron) {
      add(kHexahedron, {0, 1, 2, 3, 4, 5, 6, 7});
    } else if (kind == CellKind::kPrisms) {
      add(kPrism, {0, 1, 2, 4, 5, 6});
      add(kPrism, {0, 2, 3, 4, 6, 7});
    } else if (kind == CellKind::kTetrahedra) {
      for (const auto& corners : kTetrahedraCorners) add(kTetrahedron, {corners.begin(), corners.end()});
    } else {
      add_around_middle();
    }
  }

  void add_around_middle() {
    Vec3 middle{};
    for (std::size_t corner = 0; corner < 8; ++corner) {
      const auto node = static_cast<std::size_t>(node_[corner]);
      middle[0] += mesh_.nodes.x.values()[node] / 8.0;
      middle[1] += mesh_.nodes.y.values()[node] / 8.0;
      middle[2] += mesh_.nodes.z.values()[node] / 8.0;
    }
    node_[kMiddle] = mesh_.nodes.add(middle[0], middle[1], middle[2]);
    for (std::size_t side = 0; side < 6; ++side) {
      const auto& [low, second, high, fourth] = kSideCorners[side];
      if (cuts(neighbour(cell_, side), side)) {
        add(kTetrahedron, {low, high, second, kMiddle});
        add(kTetrahedron, {low, fourth, high, kMiddle});
      } else {
        add(kPyramid, {low, fourth, high, second, kMiddle});
      }
    }
  }

  void add(std::int32_t code, const LocalCorners& corners) {
    std::vector<std::int32_t> nodes;
    nodes.reserve(corners.size());
    for (const int corner : corners) nodes.push_back(node_[static_cast<std::size_t>(corner)]);
    const std::int32_t element = mesh_.elements.add(code, nodes);
    mesh_.cell_of_element.push_back(cell_);
    for (const FaceCorners& local : faces_of(code)) {
      unsigned common = ~0U;
      for (const int at : local) {
        if (at >= 0) common &= sides_of_corner(corners[static_cast<std::size_t>(at)], at_axis(cell_));
      }
      for (std::size_t side = 0; side < 6; ++side) {
        if ((common >> side & 1U) == 0 || neighbour(cell_, side) != CellKind::kNone) continue;
        mesh_.outer_faces.push_back(
            {.face = face_of(nodes, local, element), .cell = cell_, .side = static_cast<Side>(side)});
      }
    }
  }

  const Grid& grid_;
  CellIndex points_{};
  std::vector<CellKind> kinds_;
  std::vector<std::int32_t> number_;  // per grid point, -1 if no cell uses it
  GridMesh mesh_;
  CellIndex cell_{};                    // being made
  std::array<std::int32_t, 9> node_{};  // of its corners and middle
};

template <class T>
void append_values(Source<T>& target, const Source<T>& values) {
  target.values().insert(target.values().end(), values.values().begin(), values.values().end());
}

Surface& surface_to_fill(Mesh& mesh, const std::string& name) {
  const auto found = std::find_if(mesh.surfaces.begin(), mesh.surfaces.end(),
                                  [&](const Surface& surface) { return surface.name == name; });
  if (found != mesh.surfaces.end()) return *found;
  mesh.surfaces.push_back({.name = name});
  return mesh.surfaces.back();
}

}  // namespace

GridMesh mesh_grid(const Grid& grid) {
  return GridMesher(grid).make();
}

void append(Mesh& mesh, const GridMesh& grid, const std::string& volume_name, std::int32_t material,
            const std::function<std::string(const GridFace& face)>& surface_name) {
  const auto first_node = static_cast<std::int32_t>(mesh.nodes.size());
  const auto first_element = static_cast<std::int32_t>(mesh.elements.size());
  append_values(mesh.nodes.x, grid.nodes.x);
  append_values(mesh.nodes.y, grid.nodes.y);
  append_values(mesh.nodes.z, grid.nodes.z);
  append_values(mesh.elements.type, grid.elements.type);
  for (const std::int32_t node : grid.elements.conn.values()) {
    mesh.elements.conn.values().push_back(first_node + node);
  }
  mesh.materials.values().resize(static_cast<std::size_t>(mesh.elements.size()), material);
  if (!volume_name.empty()) {
    Volume volume{.name = volume_name};
    for (auto e = first_element; e < mesh.elements.size(); ++e) volume.elements.values().push_back(e);
    mesh.volumes.push_back(std::move(volume));
  }
  for (const GridFace& outer : grid.outer_faces) {
    const std::string name = surface_name(outer);
    if (name.empty()) continue;
    Face face = outer.face;
    for (std::size_t c = 0; c < face.corner_count(); ++c) face.corners[c] += first_node;
    face.element += first_element;
    add_face(surface_to_fill(mesh, name), face);
  }
}

}  // namespace testkit
