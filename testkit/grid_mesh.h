// Meshes over a grid of cells (i, j, k). Each cell becomes a hexahedron, two prisms, pyramids or six
// tetrahedra, or is left out; the mesh is conforming. The grid can be mapped by any function, be closed along
// j, and collapse to an axis at i = 0.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <vector>

#include "testkit/element_faces.h"
#include "testkit/mesh.h"
#include "testkit/vec3.h"

namespace testkit {

enum class CellKind {
  kNone,
  kHexahedron,
  kPrisms,    // two, cut along the diagonal of the k faces from their lowest to their highest corner
  kPyramids,  // around a node in the middle; two tetrahedra in place of a pyramid where the neighbour's face
              // is cut
  kTetrahedra,  // six around the diagonal from the lowest to the highest corner; all faces cut from lowest to
                // highest
};

enum class Side { kLowI, kHighI, kLowJ, kHighJ, kLowK, kHighK };

using CellIndex = std::array<int, 3>;

struct Grid {
  CellIndex cells{1, 1, 1};  // number of cells along i, j, k
  bool closes_along_j = false;
  // All points with i = 0 of a k are one, on an axis. The cells there can only be one prism each (asked for
  // as hexahedron or prisms).
  bool has_axis = false;
  // The position of a grid point, (0, 0, 0) to (cells[0], cells[1], cells[2]). i, j, k must be right-handed.
  std::function<Vec3(const CellIndex& point)> point{};
  // The kind of a cell. A hexahedron or prism next to a split face becomes pyramids.
  std::function<CellKind(const CellIndex& cell)> kind = [](const CellIndex&) {
    return CellKind::kHexahedron;
  };
};

// A face on the boundary of the grid or next to a cell that is left out.
struct GridFace {
  Face face;
  CellIndex cell{};
  Side side{};
};

// Nodes are numbered along i, then j, then k, skipping unused ones; the centres of pyramids come last, in
// cell order. Elements are in cell order.
struct GridMesh {
  Nodes nodes;
  Elements elements;
  std::vector<CellIndex> cell_of_element;
  std::vector<GridFace> outer_faces;
};

// Throws std::invalid_argument if cells at the axis would have to be split.
GridMesh mesh_grid(const Grid& grid);

// Appends the nodes and elements of a grid to a mesh, sharing nothing with what is there. The materials of
// the new elements are all `material`; if `volume_name` is not empty, they are a volume region of that name.
// `surface_name` tells which surface an outer face belongs to, by its name; an empty one means none.
void append(Mesh& mesh, const GridMesh& grid, const std::string& volume_name, std::int32_t material,
            const std::function<std::string(const GridFace& face)>& surface_name);

}  // namespace testkit
