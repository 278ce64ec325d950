#include "paraview/ghost_marks.h"

#include <algorithm>
#include <vtkCellArrayIterator.h>
#include <vtkDataSetAttributes.h>

namespace paraview {
namespace {

vtkSmartPointer<vtkUnsignedCharArray> no_marks(vtkIdType count) {
  auto marks = vtkSmartPointer<vtkUnsignedCharArray>::New();
  marks->SetName(vtkDataSetAttributes::GhostArrayName());
  marks->SetNumberOfValues(count);
  marks->FillValue(0);
  return marks;
}

void add(unsigned char& mark, unsigned char more) {
  mark = static_cast<unsigned char>(mark | more);
}

bool are_same(vtkUnsignedCharArray* a, vtkUnsignedCharArray* b) {
  if (a == nullptr || b == nullptr) return a == b;
  return std::equal(a->GetPointer(0), a->GetPointer(0) + a->GetNumberOfValues(), b->GetPointer(0),
                    b->GetPointer(0) + b->GetNumberOfValues());
}

}  // namespace

GhostMarks make_ghost_marks(const vtkdata::Cells& cells, std::int64_t points, std::int64_t ghosts,
                            std::span<const std::uint8_t> ghost_points,
                            const std::vector<std::uint8_t>& blanked) {
  const vtkIdType cell_count = cells.connectivity->GetNumberOfCells();
  GhostMarks marks{no_marks(cell_count), no_marks(static_cast<vtkIdType>(points))};
  unsigned char* const cell = marks.cells->GetPointer(0);
  unsigned char* const point = marks.points->GetPointer(0);
  std::fill(cell + (cell_count - static_cast<vtkIdType>(ghosts)), cell + cell_count,
            static_cast<unsigned char>(vtkDataSetAttributes::DUPLICATECELL));
  for (std::size_t i = 0; i < ghost_points.size(); ++i) {
    if (ghost_points[i] != 0) add(point[i], vtkDataSetAttributes::DUPLICATEPOINT);
  }
  if (std::find(blanked.begin(), blanked.end(), 1) == blanked.end()) return marks;
  for (std::size_t i = 0; i < blanked.size(); ++i) {
    if (blanked[i] != 0) add(point[i], vtkDataSetAttributes::HIDDENPOINT);
  }
  const auto each = vtk::TakeSmartPointer(cells.connectivity->NewIterator());
  for (each->GoToFirstCell(); !each->IsDoneWithTraversal(); each->GoToNextCell()) {
    vtkIdType count = 0;
    const vtkIdType* corners = nullptr;
    each->GetCurrentCell(count, corners);
    const auto is_blanked = [&](vtkIdType corner) { return blanked[static_cast<std::size_t>(corner)] != 0; };
    if (std::any_of(corners, corners + count, is_blanked))
      add(cell[each->GetCurrentCellId()], vtkDataSetAttributes::HIDDENCELL);
  }
  return marks;
}

bool are_same(const GhostMarks& a, const GhostMarks& b) {
  return are_same(a.cells, b.cells) && are_same(a.points, b.points);
}

}  // namespace paraview
