// The stirred tank, whose impeller turns while only the first file has geometry.
#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

#include "samples/tank.h"
#include "tests/reader/open_counter.h"
#include "tests/reader/sample_test.h"

namespace reader_test {
namespace {

namespace tank = samples::tank;

class TankSample : public SampleTest {
 protected:
  void SetUp() override { open_sample(tank::write); }

  std::filesystem::path path(int step) const { return in("tank/" + tank::file_name(step)); }
  void go_to(int step) {
    select(1, step);
    select(2, step);
  }
};

// A node of the impeller at a step, from its position in the first file.
std::array<double, 3> turned(const std::array<double, 3>& p, int step) {
  const double angle = tank::angle(tank::time_of_step(step));
  return {std::cos(angle) * p[0] - std::sin(angle) * p[1], std::sin(angle) * p[0] + std::cos(angle) * p[1],
          p[2]};
}

std::array<double, 3> in_double(const std::array<float, 3>& p) {
  return {static_cast<double>(p[0]), static_cast<double>(p[1]), static_cast<double>(p[2])};
}

void expect_turned(const Points& at_first, const Points& now, int step) {
  ASSERT_EQ(at_first.size(), now.size());
  for (std::size_t i = 0; i < now.size(); ++i) {
    const auto expected = turned(in_double(at_first[i]), step);
    for (std::size_t axis = 0; axis < 3; ++axis) ASSERT_NEAR(expected[axis], now[i][axis], 5e-8) << step;
  }
}

TEST_F(TankSample, EightStepsInBothSetsAtTheTimesOfTheFiles) {
  std::vector<float> times(tank::kSteps);
  for (int step = 0; step < tank::kSteps; ++step) {
    times[static_cast<std::size_t>(step)] = static_cast<float>(tank::time_of_step(step));
  }
  EXPECT_EQ(times, host.times(1));
  EXPECT_EQ(times, host.times(2));
  EXPECT_EQ(1, api().get_changing_geometry_status());
}

TEST_F(TankSample, PartsTurnWithTheImpellerOrStandStill) {
  const std::vector<std::string> turning = {"impeller_zone", "blade_1",          "blade_2",      "blade_3",
                                            "blade_4",       "blade_5",          "blade_6",      "disc",
                                            "hub",           "sliding_impeller", "&VFG_impeller"};
  const std::vector<std::string> standing = {"tank_zone", "tank_wall", "tank_bottom", "water_surface",
                                             "baffles",   "shaft",     "sliding_tank"};
  std::map<std::string, Points> first;
  for (const auto& list : {turning, standing}) {
    for (const auto& name : list) first[name] = nodes_of(name);
  }
  for (const int step : {1, 2, 3, 4, 5, 6, 7, 4, 4, 0, 7, 2}) {  // in order, back, again, and across
    select(1, step);
    for (const auto& name : turning) expect_turned(first[name], nodes_of(name), step);
    for (const auto& name : standing) EXPECT_EQ(first[name], nodes_of(name)) << name << " at step " << step;
  }
}

TEST_F(TankSample, BladeIsAtTheAngleOfItsStep) {
  const auto angle_of_blade = [&] {
    double x = 0.0;
    double y = 0.0;
    for (const auto& p : nodes_of("blade_1")) {
      x += p[0];
      y += p[1];
    }
    return std::atan2(y, x);
  };
  const double start = angle_of_blade();
  for (int step = 1; step < tank::kSteps; ++step) {
    select(1, step);
    const double difference = angle_of_blade() - start - tank::angle(tank::time_of_step(step));
    EXPECT_NEAR(0.0, std::remainder(difference, 2.0 * M_PI), 1e-6) << step;
  }
}

TEST_F(TankSample, ConnectivityAndCountsStayTheSame) {
  const auto parts = host.parts();
  const int zone = part_named("impeller_zone");
  std::map<int, Rows> rows;
  for (const auto& [slot, count] : host.part(zone).elements) rows[slot] = host.rows(zone, slot, count);
  for (const int step : {3, 7, 0}) {
    select(1, step);
    EXPECT_EQ(parts, host.parts());
    for (const auto& [slot, count] : host.part(zone).elements)
      EXPECT_EQ(rows[slot], host.rows(zone, slot, count));
  }
}

TEST_F(TankSample, VolumeOfTheZonesIsThatOfTheFirstStep) {
  const double impeller = volume_of(part_named("impeller_zone"));
  const double whole = volume_of(part_named("ALL_ELEMENTS"));
  EXPECT_NEAR(whole, impeller + volume_of(part_named("tank_zone")), 1e-8);
  for (const int step : {2, 5}) {
    select(1, step);
    EXPECT_NEAR(impeller, volume_of(part_named("impeller_zone")), 1e-8);
    EXPECT_NEAR(whole, volume_of(part_named("ALL_ELEMENTS")), 1e-8);
  }
}

// The formulas are evaluated at the nodes' positions at that time, in double precision.
TEST_F(TankSample, QuantitiesAreTheFormulasAtTheMovedNodes) {
  const testkit::Mesh mesh = tank::mesh();
  const int whole = part_named("ALL_ELEMENTS");
  const auto moving_nodes = static_cast<std::size_t>(host.part(part_named("impeller_zone")).nodes);
  for (const int step : {0, 1, 4, 7, 3}) {
    go_to(step);
    const double time = tank::time_of_step(step);
    std::vector<std::array<double, 3>> places(static_cast<std::size_t>(mesh.nodes.size()));
    std::vector<double> pressure;
    std::vector<double> temperature;
    std::array<std::vector<double>, 3> velocity;
    for (std::size_t i = 0; i < places.size(); ++i) {
      places[i] = {mesh.nodes.x.values()[i], mesh.nodes.y.values()[i], mesh.nodes.z.values()[i]};
      if (i < moving_nodes) places[i] = turned(places[i], step);
      const auto& [x, y, z] = places[i];
      pressure.push_back(tank::pressure(x, y, z, time));
      temperature.push_back(tank::temperature(x, y, z, time));
      for (std::size_t c = 0; c < 3; ++c) velocity[c].push_back(tank::velocity(x, y, z, time)[c]);
    }
    expect_close(pressure, scalar_on("Pressure", whole), 5000.0);
    expect_close(temperature, scalar_on("Temperature", whole), 320.0);
    for (int c = 0; c < 3; ++c) {
      expect_close(velocity[static_cast<std::size_t>(c)], host.vector(variable_named("Velocity"), whole, c),
                   1.0);
    }
    for (std::size_t axis = 0; axis < 3; ++axis) {
      std::vector<double> expected;
      Floats actual;
      const Points points = host.coordinates(whole);
      for (std::size_t i = 0; i < places.size(); ++i) {
        expected.push_back(places[i][axis]);
        actual.push_back(points[i][axis]);
      }
      expect_close(expected, actual, 0.5);
    }
  }
}

TEST_F(TankSample, ValuesOfAPartAreThoseOfTheWholeMeshAtItsNodes) {
  go_to(5);
  const double time = tank::time_of_step(5);
  for (const char* name : {"blade_3", "impeller_zone", "tank_wall", "tank_zone"}) {
    const Points nodes = nodes_of(name);
    std::vector<double> expected;
    for (const auto& p : nodes) expected.push_back(tank::temperature(p[0], p[1], p[2], time));
    // At positions rounded to single precision; the steepest gradient is about 200 K/m.
    expect_close(expected, scalar_on("Temperature", part_named(name)), 1000.0);
  }
}

// For any number of parts and any order of steps.
TEST_F(TankSample, EveryQuantityIsReadFromDiskOncePerStep) {
  OpenCounter openings;
  for (int step = 0; step < tank::kSteps; ++step) openings.watch(path(step));
  const auto parts = host.parts();
  const int pressure = variable_named("Pressure");
  const int temperature = variable_named("Temperature");
  const int velocity = variable_named("Velocity");
  ASSERT_LT(15U, parts.size());
  for (const int step : {0, 1, 2, 3, 4, 5, 6, 7, 2}) {
    go_to(step);
    openings.take_all();
    for (const int scalar : {pressure, temperature}) {
      for (const PartInfo& part : parts) host.ask({.variable = scalar, .part = part.id}, part.nodes);
    }
    for (int component = 0; component < 3; ++component) {
      for (const PartInfo& part : parts) {
        host.ask({.variable = velocity, .part = part.id, .var_type = 2, .component = component}, part.nodes);
      }
    }
    EXPECT_EQ(3, openings.take(path(step))) << "one for each of the three quantities";
    EXPECT_EQ(0, openings.take_all()) << "and no other file";
  }
}

TEST_F(TankSample, SimplifyingOptionIsSwitchedOffByTheMotion) {
  std::array<int, 2> toggles = {1, 0};
  api().set_extra_gui_data(toggles.data(), nullptr, nullptr);
  std::string expected;
  for (int step = 0; step < tank::kSteps; ++step) expected += trace(path(step));
  EXPECT_EQ(expected + trace(path(0)) + "read done\n", stderr_of([&] { host.open(path(3)); }));
}

TEST_F(TankSample, AllSurfacesOfTheTankEncloseItsZone) {
  const Enclosed enclosed =
      enclosed_by({"tank_wall", "tank_bottom", "water_surface", "baffles", "shaft", "sliding_tank"});
  for (const double area : enclosed.area) EXPECT_NEAR(0.0, area, 1e-8);
  EXPECT_NEAR(volume_of(part_named("tank_zone")), enclosed.volume, 1e-7);
}

TEST_F(TankSample, SessionReportsNoLeak) {
  for (const int step : {0, 4, 7}) {
    go_to(step);
    scalar_on("Pressure", part_named("ALL_ELEMENTS"));
    vector_on("Velocity", part_named("blade_1"));
  }
  EXPECT_EQ("", stderr_of([&] { api().exit_routine(); }));
}

}  // namespace
}  // namespace reader_test
