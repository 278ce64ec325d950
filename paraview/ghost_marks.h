// The marks by which VTK's filters leave out cells and points: those that other ranks have as their own, and
// those that are blanked.
#pragma once

#include <cstdint>
#include <span>
#include <vector>
#include <vtkSmartPointer.h>
#include <vtkUnsignedCharArray.h>

#include "vtk/cells.h"

namespace paraview {

// One mark per cell and per point; null without any.
struct GhostMarks {
  vtkSmartPointer<vtkUnsignedCharArray> cells;
  vtkSmartPointer<vtkUnsignedCharArray> points;
};

// The last `ghosts` of the cells are other ranks', and so are the points at which `ghost_points` is 1, which
// may be empty. A point at which `blanked` is 1 is hidden, and with it the cells that have it as a corner;
// `blanked` may be empty.
GhostMarks make_ghost_marks(const vtkdata::Cells& cells, std::int64_t points, std::int64_t ghosts,
                            std::span<const std::uint8_t> ghost_points,
                            const std::vector<std::uint8_t>& blanked);

// Whether they mark the same.
bool are_same(const GhostMarks& a, const GhostMarks& b);

}  // namespace paraview
