// Elements as VTK cells: types, nodes, orientation, and empty parts.
#include "vtk/cells.h"

#include "gtest/gtest.h"
#include <array>
#include <cstdint>
#include <map>
#include <vector>
#include <vtkCellArray.h>
#include <vtkCellType.h>
#include <vtkIdList.h>
#include <vtkNew.h>

#include "testkit/small_meshes.h"
#include "tests/host/open_file.h"
#include "tests/vtk/signed_volume.h"
#include "vtk/part_grid.h"

namespace {

host::ElementShape shape(int slot) {
  return *host::shape_of_slot(slot);
}

std::vector<vtkIdType> corners(const vtkdata::Cells& cells, vtkIdType cell) {
  vtkNew<vtkIdList> ids;
  cells.connectivity->GetCellAtId(cell, ids);
  return {ids->begin(), ids->end()};
}

TEST(Cells, HaveTheTypesAndCornersOfVtk) {
  const vtkdata::Cells cells = vtkdata::make_cells({{shape(6), {1, 2, 3, 3, 2, 4}},
                                                    {shape(10), {1, 2, 3, 4}},
                                                    {shape(14), {4, 3, 2, 1}},
                                                    {shape(18), {1, 2, 3, 4, 5}},
                                                    {shape(22), {1, 2, 3, 4, 5, 6}},
                                                    {shape(26), {1, 2, 3, 4, 5, 6, 7, 8}}});
  constexpr std::array<int, 7> kTypes = {VTK_TRIANGLE, VTK_TRIANGLE, VTK_QUAD,      VTK_TETRA,
                                         VTK_PYRAMID,  VTK_WEDGE,    VTK_HEXAHEDRON};
  ASSERT_EQ(cells.types->GetNumberOfValues(), 7);
  ASSERT_EQ(cells.connectivity->GetNumberOfCells(), 7);
  for (vtkIdType i = 0; i < 7; ++i) EXPECT_EQ(cells.types->GetValue(i), kTypes[static_cast<std::size_t>(i)]);
  using Ids = std::vector<vtkIdType>;
  EXPECT_EQ(corners(cells, 0), (Ids{0, 1, 2}));
  EXPECT_EQ(corners(cells, 1), (Ids{2, 1, 3}));
  EXPECT_EQ(corners(cells, 2), (Ids{0, 1, 2, 3}));
  EXPECT_EQ(corners(cells, 3), (Ids{3, 2, 1, 0}));
  EXPECT_EQ(corners(cells, 4), (Ids{0, 1, 2, 3, 4}));
  EXPECT_EQ(corners(cells, 5), (Ids{0, 2, 1, 3, 5, 4}));
  EXPECT_EQ(corners(cells, 6), (Ids{0, 1, 2, 3, 4, 5, 6, 7}));
}

TEST(Cells, AreAsNarrowAsTheyMay) {
  for (const std::int64_t most_narrow : {9, 8}) {
    const vtkdata::Cells cells =
        vtkdata::make_cells({{shape(6), {1, 2, 3}}, {shape(22), {1, 2, 3, 4, 5, 6}}}, most_narrow);
    EXPECT_EQ(cells.connectivity->IsStorage64Bit(), most_narrow == 8);
    ASSERT_EQ(cells.connectivity->GetNumberOfCells(), 2);
    EXPECT_EQ(corners(cells, 0), (std::vector<vtkIdType>{0, 1, 2}));
    EXPECT_EQ(corners(cells, 1), (std::vector<vtkIdType>{0, 2, 1, 3, 5, 4}));
  }
  EXPECT_FALSE(vtkdata::make_cells({{shape(6), {1, 2, 3}}}).connectivity->IsStorage64Bit());
}

TEST(Cells, OfNoElements) {
  const vtkdata::Cells cells = vtkdata::make_cells({});
  EXPECT_EQ(cells.connectivity->GetNumberOfCells(), 0);
  EXPECT_EQ(cells.types->GetNumberOfValues(), 0);
}

TEST(Cells, OfEveryShapeAreTheRightWayRound) {
  host_test::OpenFile file(testkit::file_of(testkit::one_of_each()));
  const auto grid = vtkdata::make_part_grid(file.session(), file.part("ALL_ELEMENTS"));
  ASSERT_EQ(grid->GetNumberOfCells(), 4);
  std::map<int, double> volumes;
  for (vtkIdType i = 0; i < 4; ++i) volumes[grid->GetCellType(i)] = vtk_test::signed_volume(grid->GetCell(i));
  EXPECT_NEAR(volumes[VTK_HEXAHEDRON], 1.0, 1e-12);
  EXPECT_NEAR(volumes[VTK_WEDGE], 1.0 / 2, 1e-12);
  EXPECT_NEAR(volumes[VTK_PYRAMID], 1.0 / 3, 1e-12);
  EXPECT_NEAR(volumes[VTK_TETRA], 1.0 / 6, 1e-12);
}

TEST(Cells, OfAPartWithoutNodes) {
  testkit::Mesh mesh = testkit::one_tetrahedron();
  mesh.surfaces.push_back({.name = "empty"});
  host_test::OpenFile file(testkit::file_of(mesh));
  const auto grid = vtkdata::make_part_grid(file.session(), file.part("empty"));
  EXPECT_EQ(grid->GetNumberOfPoints(), 0);
  EXPECT_EQ(grid->GetNumberOfCells(), 0);
}

TEST(Cells, OfAPartWithNodesAlone) {
  testkit::Mesh mesh = testkit::one_tetrahedron();
  mesh.surfaces.push_back({.name = "lines"});
  mesh.surfaces.back().add(testkit::kLineFace, {1, 3});
  host_test::OpenFile file(testkit::file_of(mesh));
  const auto grid = vtkdata::make_part_grid(file.session(), file.part("lines"));
  EXPECT_EQ(grid->GetNumberOfPoints(), file.session().part(file.part("lines")).nodes);
  EXPECT_EQ(grid->GetNumberOfCells(), 0);
}

}  // namespace
