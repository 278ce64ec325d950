// A part's elements as VTK cells.
#pragma once

#include <cstdint>
#include <limits>
#include <vector>
#include <vtkCellArray.h>
#include <vtkSmartPointer.h>
#include <vtkUnsignedCharArray.h>

#include "host/dataset.h"

namespace vtkdata {

struct Cells {
  vtkSmartPointer<vtkCellArray> connectivity;   // point numbers from 0
  vtkSmartPointer<vtkUnsignedCharArray> types;  // VTK cell types, one per cell
};

// The cells in the order of the blocks, with their nodes in VTK's order: that of the host except for prisms,
// whose triangles have the opposite orientation in VTK. Connectivity is stored in 32 bits unless there are
// more than `most_narrow` corners. Each block is released once its cells are made, so that a large part is
// never held in both forms.
Cells make_cells(std::vector<host::ElementBlock> blocks,
                 std::int64_t most_narrow = std::numeric_limits<std::int32_t>::max());

}  // namespace vtkdata
