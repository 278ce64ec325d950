#include "vtk/cells.h"

#include <algorithm>
#include <limits>
#include <vtkAOSDataArrayTemplate.h>
#include <vtkNew.h>
#include <vtkTypeInt32Array.h>
#include <vtkTypeInt64Array.h>

#include "host/vtk_cells.h"

namespace vtkdata {
namespace {

template <typename Id>
Id* fill_corners(const host::ElementBlock& block, Id* to) {
  const std::vector<int>& from = block.nodes;
  if (block.shape.nodes == host::kPrismNodes) {
    for (std::size_t first = 0; first < from.size(); first += host::kPrismNodes) {
      for (const std::size_t corner : host::kVtkPrismCorners)
        *to++ = static_cast<Id>(from[first + corner] - 1);
    }
    return to;
  }
  return std::transform(from.begin(), from.end(), to, [](int node) { return static_cast<Id>(node - 1); });
}

// Fills the connectivity of `Cells` with the given width.
template <typename IdArray>
void fill(std::vector<host::ElementBlock>& blocks, vtkIdType cells, vtkIdType corners, Cells& made) {
  using Id = typename IdArray::ValueType;
  vtkNew<IdArray> offsets;
  vtkNew<IdArray> connectivity;
  offsets->SetNumberOfValues(cells + 1);
  connectivity->SetNumberOfValues(corners);
  Id* next_offset = offsets->GetPointer(0);
  Id* next_corner = connectivity->GetPointer(0);
  unsigned char* next_type = made.types->GetPointer(0);
  Id offset = 0;
  *next_offset++ = 0;
  for (host::ElementBlock& block : blocks) {
    const auto count = block.size();
    const auto width = static_cast<Id>(block.shape.nodes);
    for (std::size_t i = 0; i < count; ++i) *next_offset++ = offset += width;
    next_type = std::fill_n(next_type, count, host::vtk_cell_type(block.shape));
    next_corner = fill_corners(block, next_corner);
    block.nodes = {};
  }
  made.connectivity->SetData(offsets, connectivity);
}

}  // namespace

Cells make_cells(std::vector<host::ElementBlock> blocks) {
  vtkIdType cells = 0;
  vtkIdType corners = 0;
  for (const host::ElementBlock& block : blocks) {
    cells += static_cast<vtkIdType>(block.size());
    corners += static_cast<vtkIdType>(block.nodes.size());
  }
  Cells made{vtkSmartPointer<vtkCellArray>::New(), vtkSmartPointer<vtkUnsignedCharArray>::New()};
  made.types->SetNumberOfValues(cells);
  if (corners <= std::numeric_limits<vtkTypeInt32>::max()) {
    fill<vtkTypeInt32Array>(blocks, cells, corners, made);
  } else {
    fill<vtkTypeInt64Array>(blocks, cells, corners, made);
  }
  return made;
}

}  // namespace vtkdata
