// Areas, volumes, flow rates and forces on the samples, against the shapes of their facets.
#include "gtest/gtest.h"
#include <array>
#include <cmath>
#include <numbers>
#include <string>
#include <vector>

#include "analysis/face_directions.h"
#include "analysis/integrals.h"
#include "samples/channel.h"
#include "samples/sector.h"
#include "samples/tank.h"
#include "testkit/temporary_directory.h"
#include "tests/analysis/part_mesh.h"

namespace {

using analysis::Column;
using analysis::PartMesh;
using analysis::Vec3;
using analysis_test::at_nodes;
using analysis_test::mesh_of;

class SampleIntegrals : public testing::Test {
 protected:
  void open(const samples::SampleInfo& sample) { reader_.session().open(sample.file); }

  PartMesh part(const char* name) { return mesh_of(reader_.session(), reader_.part(name)); }
  double measure(const char* name) { return analysis::measure_of(part(name)); }

  // The flow out of surfaces that together are closed, and the sum of its absolute values.
  template <class Function>
  void expect_no_flow(const std::vector<const char*>& surfaces, Function velocity) {
    double net = 0;
    double gross = 0;
    for (const char* name : surfaces) {
      const int number = reader_.part(name);
      const auto directions = analysis::find_face_directions(reader_.session(), {number}, cylindrical_);
      EXPECT_EQ(directions.at(number).without_element, 0) << name;
      const PartMesh mesh = part(name);
      std::array<std::vector<float>, 3> values;
      for (std::size_t axis = 0; axis < 3; ++axis)
        values[axis] = at_nodes(mesh, [&](double x, double y, double z) { return velocity(x, y, z)[axis]; });
      const std::array<Column, 3> vector = {{{values[0]}, {values[1]}, {values[2]}}};
      const double flow = analysis::integrate_flow(mesh, directions.at(number).signs, vector).value;
      net += flow;
      gross += std::abs(flow);
    }
    EXPECT_GT(gross, 0);
    EXPECT_LT(std::abs(net), 1e-6 * gross);
  }

  testkit::TemporaryDirectory directory_;
  host_test::Reader reader_;
  analysis::IsCylindrical cylindrical_ = analysis_test::is_never_cylindrical;
};

// Linear fields without divergence: their values at nodes are all that there is to know.
Vec3 shear(double x, double y, double z) {
  return {2 + 3 * y, 1 - 2 * z, 4 + x};
}
Vec3 stretch(double x, double y, double z) {
  return {2 * x, 3 * y, -5 * z};
}

TEST_F(SampleIntegrals, ChannelIsABoxWithoutAPolygon) {
  open(samples::channel::write(directory_.path()));
  constexpr double kHeight = samples::channel::kHeight;
  EXPECT_NEAR(measure("inlet"), 0.8 * kHeight, 1e-6 * 0.8 * kHeight);
  EXPECT_NEAR(measure("outlet"), 0.8 * kHeight, 1e-6 * 0.8 * kHeight);
  EXPECT_NEAR(measure("@wake_plane"), 0.8 * kHeight, 1e-6 * 0.8 * kHeight);
  EXPECT_NEAR(measure("sides"), 2 * 2.4 * kHeight, 1e-6 * 2 * 2.4 * kHeight);
  EXPECT_NEAR(measure("floor"), measure("ceiling"), 1e-6);
  // What the obstacle leaves of the floor, whichever polygon it is.
  const double volume = measure("floor") * kHeight;
  EXPECT_NEAR(measure("ALL_ELEMENTS"), volume, 1e-6 * volume);
  EXPECT_NEAR(measure("upstream") + measure("around_obstacle") + measure("wake"), volume, 1e-6 * volume);
}

TEST_F(SampleIntegrals, WhatFlowsIntoTheChannelFlowsOut) {
  open(samples::channel::write(directory_.path()));
  expect_no_flow({"inlet", "outlet", "&VFG_walls"}, shear);
  expect_no_flow({"inlet", "outlet", "floor", "ceiling", "sides", "obstacle"}, stretch);
}

TEST_F(SampleIntegrals, SectorHasTheFacetsOfItsAngles) {
  open(samples::sector::write(directory_.path()));
  cylindrical_ = analysis_test::is_whole;
  // 24 facets over 60 degrees.
  const double wedge = std::numbers::pi / 3 / 24;
  const double height = 0.4;
  const double hub = 24 * 2 * 0.3 * std::sin(wedge / 2) * height;
  EXPECT_NEAR(measure("hub"), hub, 1e-6 * hub);
  EXPECT_NEAR(measure("casing"), 2 * hub, 1e-6 * 2 * hub);
  const double ring = 24 * 0.5 * std::sin(wedge) * (0.6 * 0.6 - 0.3 * 0.3);
  EXPECT_NEAR(measure("inlet"), ring, 1e-6 * ring);
  EXPECT_NEAR(measure("periodic_high"), 0.3 * height, 1e-6 * 0.3 * height);
  EXPECT_NEAR(measure("inner") + measure("outer"), ring * height, 1e-6 * ring * height);
  expect_no_flow({"hub", "casing", "periodic_low", "periodic_high", "inlet", "outlet"}, shear);
  expect_no_flow({"hub", "casing", "periodic_low", "periodic_high", "inlet", "outlet"}, stretch);
}

// All blades are alike, and turning changes nothing.
TEST_F(SampleIntegrals, TurnedBladesStayTheSame) {
  open(samples::tank::write(directory_.path()));
  const double area = measure("blade_1");
  const int blade = reader_.part("blade_1");
  const auto signs = analysis::find_face_directions(reader_.session(), {blade}, cylindrical_).at(blade).signs;
  const auto turning_force = [&] {
    const PartMesh mesh = part("blade_1");
    const std::vector<float> one(mesh.nodes.size(), 1.0F);
    return analysis::integrate_pressure(mesh, signs, {one}, 0, {0, 0, 0.18}).moment[2];
  };
  const double first = turning_force();
  const double volume = measure("impeller_zone");
  for (int step = 0; step < samples::tank::kSteps; ++step) {
    reader_.session().select_step(step);
    for (const char* other : {"blade_1", "blade_2", "blade_6"})
      EXPECT_NEAR(measure(other), area, 2e-6 * area) << other << " at step " << step;
    EXPECT_NEAR(measure("impeller_zone"), volume, 1e-6 * volume);
    // Both faces of a blade are there: what is left is the thickness of its edges.
    EXPECT_NEAR(turning_force(), first, 1e-6 * area);
  }
}

TEST_F(SampleIntegrals, ConstantPressureHoldsTheTankInPlace) {
  open(samples::tank::write(directory_.path()));
  for (const int step : {0, 3}) {
    reader_.session().select_step(step);
    Vec3 force{};
    Vec3 moment{};
    double total = 0;
    for (const char* name :
         {"tank_wall", "tank_bottom", "water_surface", "baffles", "shaft", "sliding_tank"}) {
      const int number = reader_.part(name);
      const auto directions = analysis::find_face_directions(reader_.session(), {number}, cylindrical_);
      const PartMesh mesh = part(name);
      const std::vector<float> one(mesh.nodes.size(), 1.0F);
      const auto found =
          analysis::integrate_pressure(mesh, directions.at(number).signs, {one}, 0, {0.1, 0.2, 0.3});
      force += found.force;
      moment += found.moment;
      total += found.over.measure;
    }
    EXPECT_LT(analysis::length(force), 1e-6 * total) << "step " << step;
    EXPECT_LT(analysis::length(moment), 1e-6 * total) << "step " << step;
  }
}

}  // namespace
