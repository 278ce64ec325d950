// The faces of a part that a page shows: its own, those around it, or a cut through it.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>
#include <vtkUnstructuredGrid.h>

namespace page {

// The faces, as polygons. Nodes and elements are numbered in the part, from 1.
struct Faces {
  std::vector<std::uint8_t> sizes;  // corners per face
  std::vector<int> corners;         // point numbers from 0, face after face
  std::vector<int> elements;        // per face: the element that it is, or that it belongs to
  std::vector<int> nodes;  // per point: the node there, ascending; empty where points are between nodes

  bool operator==(const Faces&) const = default;
};

struct Surface {
  Faces faces;
  std::vector<float> points;  // x, y, z of each point
};

// The values of a variable on a surface, NaN where they are undefined.
struct SurfaceValues {
  bool per_face = false;                       // or per point
  std::vector<std::vector<float>> components;  // one, or three of a vector
};

// One number per value: of a vector a component, or the magnitude without one.
std::vector<float> component_of(const SurfaceValues& values, std::optional<int> component);

// The outer faces of the cells.
Surface outer_surface(vtkUnstructuredGrid* grid);

// The values at a surface's points or faces, from those of all the part's nodes or elements.
std::vector<float> pick_values(const std::vector<int>& numbers, const float* values, int components,
                               int component);

struct CutSurface {
  Surface surface;
  std::vector<SurfaceValues> values;  // of the grid's point arrays, then of its cell arrays, in their order
};

// Where the cells meet the plane that is perpendicular to an axis (0, 1, 2) at a position, with the grid's
// arrays of single precision interpolated there.
CutSurface cut(vtkUnstructuredGrid* grid, int axis, double position);

}  // namespace page
