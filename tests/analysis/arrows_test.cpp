// Arrows: where they are, and how long.
#include "analysis/arrows.h"

#include <array>
#include <gtest/gtest.h>
#include <limits>

#include "tests/analysis/lattice.h"

namespace {

using analysis_test::at_points;

using Vector = std::array<double, 3>;

// Points along x, 0.1 apart from 0.05 to 0.95.
vtkSmartPointer<vtkPolyData> row() {
  auto data = vtkSmartPointer<vtkPolyData>::New();
  vtkNew<vtkPoints> points;
  for (int i = 0; i < 10; ++i) points->InsertNextPoint(0.05 + 0.1 * i, 0, 0);
  data->SetPoints(points);
  return data;
}

TEST(Thinned, LeavesOnePointPerPlace) {
  const auto data = row();
  data->GetPointData()->SetVectors(at_points(data.Get(), "v", [](double x, double, double) {
    return Vector{0, x, 0};
  }));
  const auto points = analysis::thinned(data, 0.25);
  ASSERT_EQ(points->GetNumberOfPoints(), 4);
  EXPECT_NEAR(analysis::longest_vector(points), 0.75, 1e-6);
}

TEST(Thinned, LeavesOutVectorsWithoutADirection) {
  const auto data = row();
  data->GetPointData()->SetVectors(at_points(data.Get(), "v", [](double x, double, double) {
    return Vector{x < 0.5 ? 0 : x < 0.9 ? std::numeric_limits<double>::quiet_NaN() : 1, 0, 0};
  }));
  EXPECT_EQ(analysis::thinned(data, 0.01)->GetNumberOfPoints(), 1);
  EXPECT_EQ(analysis::thinned(row(), 0.01)->GetNumberOfPoints(), 0);
  EXPECT_EQ(analysis::longest_vector(analysis::thinned(row(), 0.01)), 0);
}

TEST(Arrows, AreAsLongAsTheirVectors) {
  const auto data = row();
  data->GetPointData()->SetVectors(at_points(data.Get(), "v", [](double x, double, double) {
    return Vector{0, 0, 10 * x};
  }));
  const auto made = analysis::arrows(data, 0.2);
  std::array<double, 6> box{};
  made->GetBounds(box.data());
  EXPECT_NEAR(box[4], 0, 1e-5);
  EXPECT_NEAR(box[5], 0.2 * 9.5, 1e-5);
}

}  // namespace
