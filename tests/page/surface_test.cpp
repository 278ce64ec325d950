#include "page/surface.h"

#include "gtest/gtest.h"
#include <algorithm>
#include <array>
#include <set>
#include <vector>
#include <vtkCellType.h>
#include <vtkFloatArray.h>
#include <vtkNew.h>
#include <vtkPointData.h>
#include <vtkPoints.h>
#include <vtkSmartPointer.h>

namespace {

// Two unit cubes side by side along x: nodes 1 to 12, x fastest, elements 1 and 2.
vtkSmartPointer<vtkUnstructuredGrid> two_cubes() {
  vtkNew<vtkPoints> points;
  for (int z = 0; z < 2; ++z) {
    for (int y = 0; y < 2; ++y) {
      for (int x = 0; x < 3; ++x) points->InsertNextPoint(x, y, z);
    }
  }
  auto grid = vtkSmartPointer<vtkUnstructuredGrid>::New();
  grid->SetPoints(points);
  for (vtkIdType x = 0; x < 2; ++x) {
    const std::array<vtkIdType, 8> corners = {x, x + 1, x + 4, x + 3, x + 6, x + 7, x + 10, x + 9};
    grid->InsertNextCell(VTK_HEXAHEDRON, corners.size(), corners.data());
  }
  return grid;
}

TEST(PageSurface, HasTheOuterFacesWithTheirElementsAndNodes) {
  const page::Surface surface = page::outer_surface(two_cubes());
  EXPECT_EQ(surface.faces.sizes, std::vector<std::uint8_t>(10, 4));
  EXPECT_EQ(std::count(surface.faces.elements.begin(), surface.faces.elements.end(), 1), 5);
  EXPECT_EQ(std::count(surface.faces.elements.begin(), surface.faces.elements.end(), 2), 5);
  EXPECT_EQ(surface.faces.nodes, (std::vector<int>{1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12}));
  // Node 6 is at (2, 1, 0).
  EXPECT_EQ(std::vector<float>(surface.points.begin() + 15, surface.points.begin() + 18),
            (std::vector<float>{2, 1, 0}));
  // The face between the cubes, of nodes 2, 5, 8 and 11, is inside.
  for (std::size_t face = 0; face < 10; ++face) {
    const auto from = surface.faces.corners.begin() + static_cast<std::ptrdiff_t>(4 * face);
    EXPECT_NE(std::set<int>(from, from + 4), (std::set<int>{1, 4, 7, 10}));
  }
}

TEST(PageSurface, OfNoCellsIsEmpty) {
  EXPECT_TRUE(page::outer_surface(vtkNew<vtkUnstructuredGrid>()).faces.sizes.empty());
}

TEST(PageSurface, PicksValuesByNumber) {
  const std::vector<float> values = {1, 2, 3, 4, 5, 6};
  EXPECT_EQ(page::pick_values({3, 1}, values.data(), 2, 1), (std::vector<float>{6, 2}));
}

TEST(PageCut, InterpolatesValuesInThePlane) {
  const vtkSmartPointer<vtkUnstructuredGrid> grid = two_cubes();
  vtkNew<vtkFloatArray> twice_x;
  twice_x->SetName("twice x");
  for (vtkIdType i = 0; i < grid->GetNumberOfPoints(); ++i)
    twice_x->InsertNextValue(static_cast<float>(2 * grid->GetPoint(i)[0]));
  grid->GetPointData()->AddArray(twice_x);
  const page::CutSurface cut = page::cut(grid, 0, 1.25);
  ASSERT_EQ(cut.surface.faces.sizes, std::vector<std::uint8_t>{4});
  EXPECT_EQ(cut.surface.faces.elements, std::vector<int>{2});
  EXPECT_TRUE(cut.surface.faces.nodes.empty());
  ASSERT_EQ(cut.values.size(), 1U);
  EXPECT_FALSE(cut.values[0].per_face);
  EXPECT_EQ(cut.values[0].components[0], std::vector<float>(4, 2.5F));
  for (std::size_t i = 0; i < cut.surface.points.size(); i += 3) EXPECT_EQ(cut.surface.points[i], 1.25F);
}

TEST(PageCut, BesideTheCellsIsEmpty) {
  EXPECT_TRUE(page::cut(two_cubes(), 0, 5).surface.faces.sizes.empty());
}

}  // namespace
