// Streamlines of fields whose lines are known, and the places where they begin.
#include "analysis/streamlines.h"

#include <array>
#include <cmath>
#include <gtest/gtest.h>
#include <limits>

#include "tests/analysis/lattice.h"

namespace {

using analysis::SeedLine;
using analysis::Seeds;
using analysis::SeedSphere;
using analysis_test::at_points;
using analysis_test::unit_cube;

using Vector = std::array<double, 3>;

Vector point(vtkPoints* points, vtkIdType i) {
  Vector at{};
  points->GetPoint(i, at.data());
  return at;
}

TEST(Seeds, LieOnALineWithItsEnds) {
  const auto points = analysis::seed_points(SeedLine{{0, 1, 2}, {2, 1, 0}}, 5);
  ASSERT_EQ(points->GetNumberOfPoints(), 5);
  EXPECT_EQ(point(points, 0), (Vector{0, 1, 2}));
  EXPECT_EQ(point(points, 1), (Vector{0.5, 1, 1.5}));
  EXPECT_EQ(point(points, 4), (Vector{2, 1, 0}));
  EXPECT_EQ(point(analysis::seed_points(SeedLine{{0, 1, 2}, {2, 1, 0}}, 1), 0), (Vector{1, 1, 1}));
}

TEST(Seeds, FillASphereEvenly) {
  const auto points = analysis::seed_points(SeedSphere{{1, 2, 3}, 0.5}, 1000);
  ASSERT_EQ(points->GetNumberOfPoints(), 1000);
  int inner = 0;
  Vector sum{};
  for (vtkIdType i = 0; i < 1000; ++i) {
    const Vector at = point(points, i);
    const double radius = std::hypot(at[0] - 1, at[1] - 2, at[2] - 3);
    EXPECT_LE(radius, 0.5);
    if (radius < 0.25) ++inner;
    for (std::size_t axis = 0; axis < 3; ++axis) sum[axis] += at[axis] / 1000;
  }
  EXPECT_NEAR(inner, 125, 5);  // an eighth of the volume
  EXPECT_NEAR(sum[0], 1, 0.01);
  EXPECT_NEAR(sum[1], 2, 0.01);
  EXPECT_NEAR(sum[2], 3, 0.01);
}

TEST(Streamlines, CrossTheGridBothWays) {
  const auto grid = unit_cube(4);
  grid->GetPointData()->SetVectors(at_points(grid.Get(), "v", [](double, double, double) {
    return Vector{2, 0, 0};
  }));
  grid->GetPointData()->SetScalars(
      at_points(grid.Get(), "x", [](double x, double, double) { return std::array<double, 1>{x}; }));
  const auto lines =
      analysis::streamlines(grid, analysis::seed_points(SeedLine{{0.5, 0.2, 0.3}, {0.5, 0.6, 0.3}}, 3));
  EXPECT_EQ(lines->GetNumberOfLines(), 6);  // two halves each
  std::array<double, 6> box{};
  lines->GetBounds(box.data());
  EXPECT_NEAR(box[0], 0, 0.05);
  EXPECT_NEAR(box[1], 1, 0.05);
  EXPECT_NEAR(box[2], 0.2, 1e-6);
  EXPECT_NEAR(box[3], 0.6, 1e-6);
  EXPECT_NEAR(box[4], 0.3, 1e-6);
  EXPECT_NEAR(box[5], 0.3, 1e-6);
  vtkDataArray* values = lines->GetPointData()->GetScalars();
  ASSERT_NE(values, nullptr);
  for (vtkIdType i = 0; i < lines->GetNumberOfPoints(); ++i)
    EXPECT_NEAR(values->GetComponent(i, 0), point(lines->GetPoints(), i)[0], 1e-5);
}

TEST(Streamlines, GoRoundInCircles) {
  const auto grid = unit_cube(10, {-0.5, -0.5, -0.5});
  grid->GetPointData()->SetVectors(at_points(grid.Get(), "v", [](double x, double y, double) {
    return Vector{-y, x, 0};
  }));
  const auto lines =
      analysis::streamlines(grid, analysis::seed_points(SeedLine{{0.3, 0, 0}, {0.3, 0, 0}}, 1));
  ASSERT_GT(lines->GetNumberOfPoints(), 50);
  for (vtkIdType i = 0; i < lines->GetNumberOfPoints(); ++i) {
    const Vector at = point(lines->GetPoints(), i);
    EXPECT_NEAR(std::hypot(at[0], at[1]), 0.3, 1e-4);
    EXPECT_NEAR(at[2], 0, 1e-6);
  }
}

TEST(Streamlines, PassFromOneGridToTheNext) {
  std::vector<vtkSmartPointer<vtkUnstructuredGrid>> grids = {unit_cube(3), unit_cube(3, {1, 0, 0})};
  for (const auto& grid : grids) {
    grid->GetPointData()->SetVectors(at_points(grid.Get(), "v", [](double, double, double) {
      return Vector{1, 0, 0};
    }));
  }
  const auto grid = analysis::joined(grids);
  EXPECT_EQ(grid->GetNumberOfPoints(), 4 * 4 * 7);
  grid->GetPointData()->SetActiveVectors("v");
  const auto lines =
      analysis::streamlines(grid, analysis::seed_points(SeedLine{{0.1, 0.4, 0.4}, {0.1, 0.4, 0.4}}, 1));
  std::array<double, 6> box{};
  lines->GetBounds(box.data());
  EXPECT_NEAR(box[1], 2, 0.06);
}

TEST(Streamlines, EndWhereTheVectorIsUndefined) {
  const auto grid = unit_cube(4);
  grid->GetPointData()->SetVectors(at_points(grid.Get(), "v", [](double x, double, double) {
    return Vector{x == 1 ? std::numeric_limits<double>::quiet_NaN() : 1, 0, 0};
  }));
  const auto lines =
      analysis::streamlines(grid, analysis::seed_points(SeedLine{{0.1, 0.4, 0.4}, {0.1, 0.4, 0.4}}, 1));
  std::array<double, 6> box{};
  lines->GetBounds(box.data());
  EXPECT_NEAR(box[1], 0.75, 0.05);
}

TEST(Tubes, HaveTheirRadius) {
  const auto grid = unit_cube(2);
  grid->GetPointData()->SetVectors(at_points(grid.Get(), "v", [](double, double, double) {
    return Vector{1, 0, 0};
  }));
  const auto lines =
      analysis::streamlines(grid, analysis::seed_points(SeedLine{{0.5, 0.5, 0.5}, {0.5, 0.5, 0.5}}, 1));
  const auto tubes = analysis::tubes(lines, 0.1);
  std::array<double, 6> box{};
  tubes->GetBounds(box.data());
  EXPECT_NEAR(box[3] - box[2], 0.2, 0.01);
  EXPECT_NEAR(box[5] - box[4], 0.2, 0.01);
}

}  // namespace
