// Cuts through a cube: their areas, and the values on them.
#include "analysis/cuts.h"

#include <array>
#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <vtkCellData.h>

#include "tests/analysis/lattice.h"
#include "tests/analysis/surface_area.h"

namespace {

using analysis::CutPlane;
using analysis_test::area;
using analysis_test::at_points;
using analysis_test::unit_cube;

constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();

double linear(double x, double y, double z) {
  return 3 * x - 2 * y + 0.5 * z;
}

std::array<double, 1> linear_field(double x, double y, double z) {
  return {linear(x, y, z)};
}

TEST(CutByPlane, HasTheAreaOfTheCut) {
  const auto grid = unit_cube(5);
  const auto square = analysis::cut_by_plane(grid, CutPlane{{0.33, 9, -4}, {-2, 0, 0}});
  EXPECT_EQ(square->GetNumberOfCells(), 25);
  EXPECT_NEAR(area(square), 1, 1e-6);
  const auto hexagon = analysis::cut_by_plane(grid, CutPlane{{0.5, 0.5, 0.5}, {1, 1, 1}});
  EXPECT_NEAR(area(hexagon), 3 * std::sqrt(3.0) / 4, 1e-6);
  EXPECT_EQ(analysis::cut_by_plane(grid, CutPlane{{2, 0, 0}, {1, 0, 0}})->GetNumberOfCells(), 0);
}

TEST(CutByPlane, InterpolatesValues) {
  const auto grid = unit_cube(4);
  grid->GetPointData()->SetScalars(at_points(grid.Get(), "f", linear_field));
  const auto cut = analysis::cut_by_plane(grid, CutPlane{{0.3, 0.3, 0.3}, {1, 2, -1}});
  vtkDataArray* values = cut->GetPointData()->GetScalars();
  ASSERT_NE(values, nullptr);
  ASSERT_GT(values->GetNumberOfTuples(), 20);
  for (vtkIdType i = 0; i < values->GetNumberOfTuples(); ++i) {
    std::array<double, 3> at{};
    cut->GetPoint(i, at.data());
    EXPECT_NEAR(at[0] + 2 * at[1] - at[2], 0.6, 1e-6);
    EXPECT_NEAR(values->GetComponent(i, 0), linear(at[0], at[1], at[2]), 2e-6);
  }
}

TEST(CutByPlane, KeepsTheValuesOfCells) {
  const auto grid = unit_cube(2);
  vtkNew<vtkFloatArray> numbers;
  numbers->SetName("numbers");
  for (int i = 0; i < 8; ++i) numbers->InsertNextValue(static_cast<float>(i));
  grid->GetCellData()->SetScalars(numbers);
  const auto cut = analysis::cut_by_plane(grid, CutPlane{{0, 0, 0.75}, {0, 0, 1}});
  vtkDataArray* values = cut->GetCellData()->GetScalars();
  ASSERT_NE(values, nullptr);
  ASSERT_EQ(values->GetNumberOfTuples(), 4);
  for (int i = 0; i < 4; ++i) EXPECT_EQ(values->GetComponent(i, 0), 4 + i);
}

TEST(CutByValue, LiesWhereTheFieldHasTheValue) {
  const auto grid = unit_cube(4);
  const auto field =
      at_points(grid.Get(), "f", [](double x, double y, double) { return std::array<double, 1>{x + 2 * y}; });
  grid->GetPointData()->SetScalars(at_points(grid.Get(), "colours", linear_field));
  const auto surface = analysis::cut_by_value(grid, field, 1.1);
  // From (0, 0.55) to (1, 0.05), all the way up.
  EXPECT_NEAR(area(surface), std::hypot(1.0, 0.5), 1e-6);
  vtkDataArray* values = surface->GetPointData()->GetScalars();
  ASSERT_NE(values, nullptr);
  for (vtkIdType i = 0; i < surface->GetNumberOfPoints(); ++i) {
    std::array<double, 3> at{};
    surface->GetPoint(i, at.data());
    EXPECT_NEAR(at[0] + 2 * at[1], 1.1, 1e-6);
    EXPECT_NEAR(values->GetComponent(i, 0), linear(at[0], at[1], at[2]), 2e-6);
  }
  EXPECT_EQ(analysis::cut_by_value(grid, field, 3.5)->GetNumberOfCells(), 0);
}

TEST(CutByValue, LeavesOutElementsWithUndefinedCorners) {
  const auto grid = unit_cube(2);
  const auto field = at_points(grid.Get(), "f", [](double x, double y, double z) {
    return std::array<double, 1>{x == 0 && y == 0 && z == 0 ? double(kNaN) : x};
  });
  const auto surface = analysis::cut_by_value(grid, field, 0.25);
  EXPECT_NEAR(area(surface), 0.75, 1e-6);
  EXPECT_EQ(analysis::cells_with_values(grid, field)->GetNumberOfCells(), 7);
}

}  // namespace
