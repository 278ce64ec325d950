// A part's elements as VTK cells.
#pragma once

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

// The cells in the order of the blocks, with the corners in VTK's order: that of the host but for prisms,
// whose triangles turn the other way round in VTK. Point numbers are 32 bits wide unless the connectivity is
// longer than that. Each block is released when its cells are made, so that both forms of a large part are
// never there at once.
Cells make_cells(std::vector<host::ElementBlock> blocks);

}  // namespace vtkdata
