#include "paraview/share.h"

#include <gtest/gtest.h>
#include <vtkCellType.h>
#include <vtkFloatArray.h>
#include <vtkNew.h>

#include "host/element_slots.h"

namespace paraview {
namespace {

using Numbers = std::vector<int>;

// Two triangles and a quadrilateral: 0-1-2, 2-1-3, 2-3-5-4.
vtkdata::Cells three_faces() {
  return vtkdata::make_cells(
      {{*host::shape_of_slot(6), {1, 2, 3, 3, 2, 4}}, {*host::shape_of_slot(10), {3, 4, 6, 5}}});
}

Numbers corners_of(const vtkdata::Cells& cells, vtkIdType cell) {
  vtkIdType count = 0;
  const vtkIdType* corners = nullptr;
  cells.connectivity->GetCellAtId(cell, count, corners);
  return {corners, corners + count};
}

TEST(Share, RangesCoverEveryCellOnceAndAreEvenWithinOne) {
  for (const vtkIdType cells : {0, 1, 7, 100, 101}) {
    for (const int count : {1, 2, 3, 8}) {
      vtkIdType next = 0;
      for (int share = 0; share < count; ++share) {
        const CellRange range = range_of_share(cells, share, count);
        EXPECT_EQ(range.first, next);
        EXPECT_LE(cells / count, range.last - range.first);
        EXPECT_LE(range.last - range.first, cells / count + 1);
        next = range.last;
      }
      EXPECT_EQ(next, cells);
    }
  }
}

TEST(Share, HasItsCellsWithTheNodesThatTheyUse) {
  ShareCutter cutter(three_faces(), 6);
  const CellShare last = cutter.cut({1, 3});
  EXPECT_EQ(last.nodes, (Numbers{2, 1, 3, 5, 4}));
  EXPECT_EQ(corners_of(last.cells, 0), (Numbers{0, 1, 2}));
  EXPECT_EQ(corners_of(last.cells, 1), (Numbers{0, 2, 3, 4}));
  EXPECT_EQ(last.cells.types->GetValue(0), VTK_TRIANGLE);
  EXPECT_EQ(last.cells.types->GetValue(1), VTK_QUAD);
}

TEST(Share, DoesNotDependOnTheSharesBefore) {
  ShareCutter cutter(three_faces(), 6);
  cutter.cut({0, 2});
  EXPECT_EQ(cutter.cut({0, 1}).nodes, (Numbers{0, 1, 2}));
}

TEST(Share, MayBeEmpty) {
  ShareCutter cutter(three_faces(), 6);
  const CellShare none = cutter.cut({3, 3});
  EXPECT_TRUE(none.nodes.empty());
  EXPECT_EQ(none.cells.connectivity->GetNumberOfCells(), 0);
}

TEST(Share, TakesPointsAndTuplesOfItsNodesAndCells) {
  vtkNew<vtkFloatArray> vectors;
  vectors->SetNumberOfComponents(2);
  for (const float value : {0.0F, 0.5F, 1.0F, 1.5F, 2.0F, 2.5F}) vectors->InsertNextValue(value);
  const auto of_nodes = take_tuples(vectors, Numbers{2, 0});
  EXPECT_EQ(of_nodes->GetNumberOfTuples(), 2);
  EXPECT_EQ(of_nodes->GetComponent(0, 1), 2.5);
  EXPECT_EQ(of_nodes->GetComponent(1, 0), 0.0);
  const auto of_cells = take_tuples(vectors, CellRange{1, 3});
  EXPECT_EQ(of_cells->GetNumberOfTuples(), 2);
  EXPECT_EQ(of_cells->GetComponent(0, 0), 1.0);

  vtkNew<vtkPoints> points;
  points->SetDataType(VTK_FLOAT);
  points->InsertNextPoint(1, 2, 3);
  points->InsertNextPoint(4, 5, 6);
  EXPECT_EQ(take_points(points, {1})->GetPoint(0)[2], 6.0);
}

}  // namespace
}  // namespace paraview
