// Cells for VTK, also where they have more corners than 32 bits count.
#include "paraview/share_cells.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <vtkCellType.h>

namespace paraview_test {
namespace {

parallel::ShareCells cells(const std::vector<std::uint8_t>& codes, const std::vector<std::int32_t>& corners) {
  parallel::ShareCells made{parallel::Array<std::uint8_t>(static_cast<std::int64_t>(codes.size())),
                            parallel::Array<std::int32_t>(static_cast<std::int64_t>(corners.size())),
                            0,
                            {}};
  std::copy(codes.begin(), codes.end(), made.codes.data());
  std::copy(corners.begin(), corners.end(), made.corners.data());
  return made;
}

// A tetrahedron and a prism.
parallel::ShareCells two() {
  return cells({34, 36}, {0, 1, 2, 3, 4, 5, 6, 7, 8, 9});
}

std::vector<vtkIdType> corners_of(const vtkdata::Cells& made, vtkIdType cell) {
  vtkIdType count = 0;
  const vtkIdType* corners = nullptr;
  made.connectivity->GetCellAtId(cell, count, corners);
  return {corners, corners + count};
}

TEST(ShareCells, HaveVtksTypesAndCornersAndAreAsNarrowAsTheyMay) {
  for (const std::int64_t most_narrow : {10, 9}) {
    const vtkdata::Cells made = paraview::make_cells(two(), most_narrow);
    EXPECT_EQ(made.connectivity->IsStorage64Bit(), most_narrow == 9);
    ASSERT_EQ(made.connectivity->GetNumberOfCells(), 2);
    EXPECT_EQ(made.types->GetValue(0), VTK_TETRA);
    EXPECT_EQ(made.types->GetValue(1), VTK_WEDGE);
    EXPECT_EQ(corners_of(made, 0), (std::vector<vtkIdType>{0, 1, 2, 3}));
    EXPECT_EQ(corners_of(made, 1), (std::vector<vtkIdType>{4, 6, 5, 7, 9, 8}));
  }
}

TEST(ShareCells, AreTheSameWhenTypesAndCornersAre) {
  const vtkdata::Cells one = paraview::make_cells(two());
  EXPECT_TRUE(paraview::are_same(one, paraview::make_cells(two())));
  EXPECT_FALSE(
      paraview::are_same(one, paraview::make_cells(cells({34, 36}, {0, 1, 2, 3, 4, 5, 6, 7, 9, 8}))));
  EXPECT_FALSE(paraview::are_same(one, paraview::make_cells(cells({38}, {0, 1, 2, 3, 4, 5, 6, 7}))));
  EXPECT_FALSE(paraview::are_same({}, one));
  // The first of the two cells.
  EXPECT_FALSE(paraview::are_same(paraview::make_cells(cells({34}, {0, 1, 2, 3})), one));
  const vtkdata::Cells none = paraview::make_cells(cells({}, {}));
  EXPECT_EQ(none.connectivity->GetNumberOfCells(), 0);
}

}  // namespace
}  // namespace paraview_test
