#include "vtk/cells.h"

#include <algorithm>
#include <vtkAOSDataArrayTemplate.h>
#include <vtkNew.h>
#include <vtkTypeInt32Array.h>
#include <vtkTypeInt64Array.h>

#include "host/thread_ranges.h"
#include "host/vtk_cells.h"

namespace vtkdata {
namespace {

template <typename Id>
void fill_corners(const host::ElementBlock& block, Id* to) {
  const int* const from = block.nodes.data();
  const auto width = static_cast<std::size_t>(block.shape.nodes);
  host::for_ranges(block.size(), width * sizeof(Id), [=](std::size_t begin, std::size_t end) {
    if (width == host::kPrismNodes) {
      for (std::size_t first = begin * width; first < end * width; first += width) {
        for (std::size_t i = 0; i < width; ++i)
          to[first + i] = static_cast<Id>(from[first + host::kVtkPrismCorners[i]] - 1);
      }
    } else {
      for (std::size_t i = begin * width; i < end * width; ++i) to[i] = static_cast<Id>(from[i] - 1);
    }
  });
}

// Where the elements begin behind the first, at `start`, and where the last ends.
template <typename Id>
void fill_offsets(std::size_t count, Id width, Id start, Id* to) {
  host::for_ranges(count, sizeof(Id), [=](std::size_t begin, std::size_t end) {
    for (std::size_t i = begin; i < end; ++i) to[i] = start + static_cast<Id>(i + 1) * width;
  });
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
    fill_offsets(count, width, offset, next_offset);
    fill_corners(block, next_corner);
    next_type = std::fill_n(next_type, count, host::vtk_cell_type(block.shape));
    next_offset += count;
    next_corner += block.nodes.size();
    offset += static_cast<Id>(block.nodes.size());
    block.nodes = {};
  }
  made.connectivity->SetData(offsets, connectivity);
}

}  // namespace

Cells make_cells(std::vector<host::ElementBlock> blocks, std::int64_t most_narrow) {
  vtkIdType cells = 0;
  vtkIdType corners = 0;
  for (const host::ElementBlock& block : blocks) {
    cells += static_cast<vtkIdType>(block.size());
    corners += static_cast<vtkIdType>(block.nodes.size());
  }
  Cells made{vtkSmartPointer<vtkCellArray>::New(), vtkSmartPointer<vtkUnsignedCharArray>::New()};
  made.types->SetNumberOfValues(cells);
  if (corners <= most_narrow) {
    fill<vtkTypeInt32Array>(blocks, cells, corners, made);
  } else {
    fill<vtkTypeInt64Array>(blocks, cells, corners, made);
  }
  return made;
}

}  // namespace vtkdata
