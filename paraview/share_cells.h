// Cells of a share as VTK cells.
#pragma once

#include <cstdint>
#include <limits>

#include "parallel/part_share.h"
#include "vtk/cells.h"

namespace paraview {

// The cells in their order, with the corners of prisms in VTK's order. Takes over the memory of the arrays.
// Point numbers are 32 bits wide unless there are more than `most_narrow` corners.
vtkdata::Cells make_cells(parallel::ShareCells cells,
                          std::int64_t most_narrow = std::numeric_limits<std::int32_t>::max());

// Whether they are the same cells.
bool are_same(const vtkdata::Cells& a, const vtkdata::Cells& b);

}  // namespace paraview
