// Cuts, isosurfaces and streamlines of the samples: the exact areas of their facets, and fields whose values
// and lines are known.
#include "gtest/gtest.h"
#include <algorithm>
#include <array>
#include <cmath>
#include <string>
#include <vector>
#include <vtkPointData.h>

#include "analysis/cuts.h"
#include "analysis/streamlines.h"
#include "samples/channel.h"
#include "samples/sector.h"
#include "samples/tank.h"
#include "testkit/temporary_directory.h"
#include "tests/analysis/lattice.h"
#include "tests/analysis/surface_area.h"
#include "tests/host/open_file.h"
#include "vtk/part_grid.h"

namespace {

using analysis::CutPlane;
using analysis_test::area;
using analysis_test::at_points;
using Vector = std::array<double, 3>;

double rising(double x, double y, double z) {
  return 300 + 3 * x - 2 * y + 0.5 * z;
}

Vector place(vtkPolyData* data, vtkIdType i) {
  Vector at{};
  data->GetPoint(i, at.data());
  return at;
}

class SampleCuts : public testing::Test {
 protected:
  void open(const samples::SampleInfo& sample) { reader_.session().open(sample.file); }

  // With the linear field as scalars.
  vtkSmartPointer<vtkUnstructuredGrid> part(const std::string& name) {
    const auto grid = vtkdata::make_part_grid(reader_.session(), reader_.part(name));
    grid->GetPointData()->SetScalars(at_points(grid.Get(), "linear", [](double x, double y, double z) {
      return std::array<double, 1>{rising(x, y, z)};
    }));
    return grid;
  }

  // Of the cut, and that the field is right on it.
  static double cut_area(vtkUnstructuredGrid* grid, const CutPlane& plane) {
    const auto cut = analysis::cut_by_plane(grid, plane);
    vtkDataArray* values = cut->GetPointData()->GetScalars();
    for (vtkIdType i = 0; i < cut->GetNumberOfPoints(); ++i) {
      const Vector at = place(cut, i);
      const double expected = rising(at[0], at[1], at[2]);
      EXPECT_NEAR(values->GetComponent(i, 0), expected, 1e-6 * expected);
    }
    return area(cut);
  }

  // From one seed, with this vector.
  static vtkSmartPointer<vtkPolyData> line_from(vtkUnstructuredGrid* grid, const Vector& seed,
                                                Vector (*vector)(double, double, double)) {
    grid->GetPointData()->SetVectors(at_points(grid, "v", vector));
    return analysis::streamlines(grid, analysis::seed_points(analysis::SeedLine{seed, seed}, 1));
  }

  testkit::TemporaryDirectory directory_;
  host_test::Reader reader_;
};

// Its elements are tetrahedra, pyramids, prisms and hexahedra.
TEST_F(SampleCuts, OfTheChannelHaveTheAreasOfItsFacets) {
  open(samples::channel::write(directory_.path()));
  const auto channel = part("ALL_ELEMENTS");
  // 2.4 by 0.8 without the obstacle, a polygon of 32 corners on a circle of radius 0.1.
  constexpr double kFloor = 1.8888090849083086;
  EXPECT_NEAR(cut_area(channel, {{0, 0, 0.1}, {0, 0, 1}}), kFloor, 1e-6 * kFloor);
  EXPECT_NEAR(cut_area(channel, {{1.3, 0, 0}, {1, 0, 0}}), 0.8 * 0.32, 1e-6 * 0.256);
  // Through the obstacle's axis, where two of its corners and the faces of elements are in the plane.
  EXPECT_NEAR(cut_area(channel, {{0, 0, 0}, {1, 0, 0}}), 0.6 * 0.32, 1e-6 * 0.192);
  // Oblique: as wide as the channel, and higher by the slope.
  EXPECT_NEAR(cut_area(channel, {{1.3, 0, 0}, {1, 0, 0.5}}), 0.2862167011199731, 1e-6 * 0.286);
  double parts = 0;
  for (const char* name : {"upstream", "around_obstacle", "wake"})
    parts += cut_area(part(name), {{0, 0, 0.1}, {0, 0, -2}});
  EXPECT_NEAR(parts, kFloor, 1e-6 * kFloor);
}

TEST_F(SampleCuts, OfTheTankHaveTheAreasOfItsFacets) {
  open(samples::tank::write(directory_.path()));
  // 56 facets: 4 of 2 degrees, 52 between them; without the baffles, which are at the 4, and the shaft.
  constexpr double kLevel = 0.19484700586673354;
  // From wall to wall through the axis, between two baffles, which reach in to radius 0.225.
  constexpr double kUpright = 0.19055097374290506;
  // The impeller's zone below its blades: 60 facets, 6 of them of 3 degrees.
  constexpr double kZone = 0.048991357313744495;
  for (const int step : {0, 5}) {
    reader_.session().select_step(step);
    const auto tank = part("tank_zone");
    EXPECT_NEAR(cut_area(tank, {{0, 0, 0.3}, {0, 0, 1}}), kLevel, 1e-6 * kLevel) << step;
    EXPECT_NEAR(cut_area(tank, {{0, 0, 0}, {0, 1, 0}}), kUpright, 1e-6 * kUpright) << step;
    EXPECT_NEAR(cut_area(part("impeller_zone"), {{0, 0, 0.14}, {0, 0, 1}}), kZone, 1e-6 * kZone) << step;
  }
}

TEST_F(SampleCuts, OfTheSectorHaveTheAreasOfItsFacets) {
  open(samples::sector::write(directory_.path()));
  // A ring of 24 facets of 2.5 degrees, in two parts.
  constexpr double kRing = 0.14132681506368866;
  const auto inner = part("inner");
  const auto outer = part("outer");
  const auto both = [&](const CutPlane& plane) { return cut_area(inner, plane) + cut_area(outer, plane); };
  EXPECT_NEAR(both({{0, 0, 0.17}, {0, 0, 3}}), kRing, 1e-6 * kRing);
  // Along the radius through the middle of a facet, where the ring is a little narrower than 0.3.
  const double angle = std::acos(-1.0) / 180 * 31.25;
  EXPECT_NEAR(both({{0, 0, 0}, {-std::sin(angle), std::cos(angle), 0}}), 0.1199714432495891, 1e-6 * 0.12);
}

TEST_F(SampleCuts, IsosurfacesOfALinearFieldArePlanes) {
  open(samples::channel::write(directory_.path()));
  const auto channel = part("ALL_ELEMENTS");
  const auto field = at_points(channel.Get(), "oblique",
                               [](double x, double, double z) { return std::array<double, 1>{x + 0.5 * z}; });
  const auto surface = analysis::cut_by_value(channel, field, 1.3);
  EXPECT_NEAR(area(surface), 0.2862167011199731, 1e-6 * 0.286);
  vtkDataArray* values = surface->GetPointData()->GetScalars();
  ASSERT_GT(surface->GetNumberOfPoints(), 100);
  for (vtkIdType i = 0; i < surface->GetNumberOfPoints(); ++i) {
    const Vector at = place(surface, i);
    EXPECT_NEAR(at[0] + 0.5 * at[2], 1.3, 1e-6 * 1.3);
    const double expected = rising(at[0], at[1], at[2]);
    EXPECT_NEAR(values->GetComponent(i, 0), expected, 1e-6 * expected);
  }
}

// The hot wake of the cylinder, where the temperature of the formula is 300 K.
TEST_F(SampleCuts, IsosurfacesOfTheTemperatureLieWhereItsFormulaSays) {
  open(samples::channel::write(directory_.path()));
  const auto wake = part("wake");
  const auto values = vtkdata::make_values(reader_.session(), reader_.variable("Temperature"),
                                           reader_.part("wake"), "temperature");
  const auto surface = analysis::cut_by_value(wake, values, 300);
  ASSERT_GT(surface->GetNumberOfPoints(), 100);
  for (vtkIdType i = 0; i < surface->GetNumberOfPoints(); ++i) {
    const Vector at = place(surface, i);
    // Between two nodes of a mesh of 0.04 m the formula is nearly linear.
    EXPECT_NEAR(samples::channel::temperature(at[0], at[1], at[2]), 300, 0.4);
  }
}

TEST_F(SampleCuts, StreamlinesOfAUniformFlowAreStraight) {
  open(samples::channel::write(directory_.path()));
  // Past the obstacle, through elements of all shapes.
  const auto lines = line_from(part("ALL_ELEMENTS"), {-0.5, 0.15, 0.05}, [](double, double, double) {
    return Vector{2, 0.1, 0.2};
  });
  double farthest = 0;
  for (vtkIdType i = 0; i < lines->GetNumberOfPoints(); ++i) {
    const Vector at = place(lines, i);
    EXPECT_NEAR(at[1], 0.15 + 0.05 * (at[0] + 0.5), 1e-6);
    EXPECT_NEAR(at[2], 0.05 + 0.1 * (at[0] + 0.5), 1e-6);
    farthest = std::max(farthest, at[0]);
  }
  EXPECT_NEAR(farthest, 1.8, 0.05);
}

TEST_F(SampleCuts, StreamlinesOfATurningTankAreCircles) {
  open(samples::tank::write(directory_.path()));
  const auto lines = line_from(part("tank_zone"), {0.2, 0, 0.4}, [](double x, double y, double) {
    return Vector{-y, x, 0};
  });
  double least = 1;
  for (vtkIdType i = 0; i < lines->GetNumberOfPoints(); ++i) {
    const Vector at = place(lines, i);
    EXPECT_NEAR(std::hypot(at[0], at[1]), 0.2, 1e-4 * 0.2);
    EXPECT_NEAR(at[2], 0.4, 1e-6);
    least = std::min(least, at[0]);
  }
  EXPECT_NEAR(least, -0.2, 1e-3);
}

// Potential flow past a cylinder: y (1 - R^2 / r^2) is the same all along a line.
TEST_F(SampleCuts, StreamlinesOfTheChannelFollowItsFlow) {
  open(samples::channel::write(directory_.path()));
  const auto lines = line_from(part("ALL_ELEMENTS"), {-0.55, 0.1, 0.16}, [](double x, double y, double z) {
    const testkit::Vec3 v = samples::channel::velocity(x, y, z);
    return Vector{v[0], v[1], v[2]};
  });
  const auto stream = [](const Vector& at) {
    const double r2 = at[0] * at[0] + at[1] * at[1];
    return at[1] * (1 - samples::channel::kRadius * samples::channel::kRadius / r2);
  };
  const double first = stream({-0.55, 0.1, 0.16});
  double farthest = 0;
  for (vtkIdType i = 0; i < lines->GetNumberOfPoints(); ++i) {
    EXPECT_NEAR(stream(place(lines, i)), first, 0.002);
    farthest = std::max(farthest, place(lines, i)[0]);
  }
  EXPECT_NEAR(farthest, 1.8, 0.05);
}

}  // namespace
