// Which cells and points filters leave out.
#include "paraview/ghost_marks.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <vtkCellData.h>
#include <vtkDataSetAttributes.h>
#include <vtkPointData.h>

#include "format/element_codes.h"
#include "paraview/share_cells.h"
#include "samples/overset.h"
#include "testkit/temporary_directory.h"
#include "tests/paraview/paraview_reader.h"

namespace paraview_test {
namespace {

constexpr unsigned char kCopy = vtkDataSetAttributes::DUPLICATECELL;
constexpr unsigned char kHiddenCell = vtkDataSetAttributes::HIDDENCELL;
constexpr unsigned char kHiddenPoint = vtkDataSetAttributes::HIDDENPOINT;

std::vector<int> values_of(vtkUnsignedCharArray* array) {
  return {array->GetPointer(0), array->GetPointer(0) + array->GetNumberOfValues()};
}

// Three triangles in a row, of which the last is another rank's.
vtkdata::Cells triangles() {
  parallel::ShareCells cells{parallel::Array<std::uint8_t>(3), parallel::Array<std::int32_t>(9), 1, {}};
  std::fill_n(cells.codes.data(), 3, static_cast<std::uint8_t>(fld::kTriangleFace));
  const std::int32_t corners[] = {0, 1, 2, 1, 2, 3, 2, 3, 4};
  std::copy_n(corners, 9, cells.corners.data());
  return paraview::make_cells(std::move(cells));
}

TEST(GhostMarks, AreOfOtherRanksAndOfWhatIsBlanked) {
  const std::vector<std::uint8_t> others = {1, 0, 1, 0, 1};
  const paraview::GhostMarks shared = paraview::make_ghost_marks(triangles(), 5, 1, others, {});
  EXPECT_EQ(values_of(shared.cells), (std::vector<int>{0, 0, kCopy}));
  EXPECT_EQ(values_of(shared.points), (std::vector<int>{1, 0, 1, 0, 1}));
  const paraview::GhostMarks blanked = paraview::make_ghost_marks(triangles(), 5, 1, others, {0, 0, 0, 0, 1});
  EXPECT_EQ(values_of(blanked.cells), (std::vector<int>{0, 0, kCopy | kHiddenCell}));
  EXPECT_EQ(values_of(blanked.points), (std::vector<int>{1, 0, 1, 0, 1 | kHiddenPoint}));
  const paraview::GhostMarks hidden = paraview::make_ghost_marks(triangles(), 5, 0, {}, {1, 1, 1, 1, 1});
  EXPECT_EQ(values_of(hidden.cells), (std::vector<int>{kHiddenCell, kHiddenCell, kHiddenCell}));
  EXPECT_EQ(values_of(hidden.points), std::vector<int>(5, kHiddenPoint));
  EXPECT_FALSE(are_same(shared, blanked));
  EXPECT_TRUE(are_same(shared, paraview::make_ghost_marks(triangles(), 5, 1, others, {})));
}

// Blanked nodes of the background have no values; the ring has none.
TEST(GhostMarks, HideTheBlankedNodesOfOversetMeshes) {
  const testkit::TemporaryDirectory directory;
  Reader reader(samples::overset::write(directory.path()).file);
  ASSERT_TRUE(reader.update());
  vtkUnstructuredGrid* background = reader.grid("background");
  auto* points = vtkUnsignedCharArray::SafeDownCast(background->GetPointData()->GetArray("vtkGhostType"));
  auto* cells = vtkUnsignedCharArray::SafeDownCast(background->GetCellData()->GetArray("vtkGhostType"));
  ASSERT_NE(points, nullptr);
  ASSERT_NE(cells, nullptr);
  int hidden = 0;
  for (vtkIdType i = 0; i < background->GetNumberOfPoints(); ++i) {
    const double* x = background->GetPoint(i);
    const bool is_blanked = samples::overset::is_blanked(x[0], x[1]);
    ASSERT_EQ(points->GetValue(i), is_blanked ? kHiddenPoint : 0) << "point " << i;
    hidden += static_cast<int>(is_blanked);
  }
  EXPECT_GT(hidden, 100);
  hidden = 0;
  for (vtkIdType cell = 0; cell < background->GetNumberOfCells(); ++cell) {
    vtkIdType count = 0;
    const vtkIdType* corners = nullptr;
    background->GetCellPoints(cell, count, corners);
    bool has_blanked = false;
    for (vtkIdType i = 0; i < count; ++i) has_blanked = has_blanked || points->GetValue(corners[i]) != 0;
    ASSERT_EQ(cells->GetValue(cell), has_blanked ? kHiddenCell : 0) << "cell " << cell;
    hidden += static_cast<int>(has_blanked);
  }
  EXPECT_GT(hidden, 100);
  const std::vector<int> ring = values_of(
      vtkUnsignedCharArray::SafeDownCast(reader.grid("ring")->GetCellData()->GetArray("vtkGhostType")));
  EXPECT_EQ(std::count(ring.begin(), ring.end(), 0), static_cast<std::ptrdiff_t>(ring.size()));
}

TEST(GhostMarks, AreNotThereWhereNoVariableTellsWhatIsBlanked) {
  const testkit::TemporaryDirectory directory;
  Reader reader(samples::overset::write(directory.path()).file);
  ASSERT_TRUE(reader.open());
  for (const char* name : {"Pressure", "Velocity"}) reader->SetPointArrayStatus(name, 0);
  ASSERT_TRUE(reader.update());
  const std::vector<int> marks = values_of(
      vtkUnsignedCharArray::SafeDownCast(reader.grid("background")->GetCellData()->GetArray("vtkGhostType")));
  EXPECT_EQ(std::count(marks.begin(), marks.end(), 0), static_cast<std::ptrdiff_t>(marks.size()));
}

}  // namespace
}  // namespace paraview_test
