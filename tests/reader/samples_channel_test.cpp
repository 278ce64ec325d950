// The steady channel with an obstacle.
#include <algorithm>
#include <array>
#include <cmath>
#include <set>
#include <vector>

#include "samples/channel.h"
#include "tests/reader/sample_test.h"

namespace reader_test {
namespace {

namespace channel = samples::channel;

class ChannelSample : public SampleTest {
 protected:
  void SetUp() override { open_sample(channel::write); }
};

const std::vector<std::string> kOuterSurfaces = {"inlet", "outlet", "floor", "ceiling", "sides", "obstacle"};

TEST_F(ChannelSample, PartsAreItsSurfacesItsVolumesAndTheWholeMesh) {
  const auto names = host.part_names();
  ASSERT_EQ(12U, names.size());
  EXPECT_EQ((std::set<std::string>{"inlet", "outlet", "floor", "ceiling", "sides", "obstacle", "&VFG_walls",
                                   "@wake_plane"}),
            std::set<std::string>(names.begin(), names.begin() + 8));
  EXPECT_EQ((std::set<std::string>{"upstream", "around_obstacle", "wake"}),
            std::set<std::string>(names.begin() + 8, names.begin() + 11));
  EXPECT_EQ("ALL_ELEMENTS", names[11]);
}

TEST_F(ChannelSample, SteadyFlowHasOneStep) {
  EXPECT_EQ((std::vector<float>{0.0F}), host.times(1));
  EXPECT_EQ((std::vector<float>{0.0F}), host.times(2));
  EXPECT_EQ(0, api().get_changing_geometry_status());
}

TEST_F(ChannelSample, WholeMeshFillsTheChannelsBox) {
  const Points nodes = nodes_of("ALL_ELEMENTS");
  const auto limits = [&](std::size_t axis) {
    const auto [low, high] = std::minmax_element(nodes.begin(), nodes.end(),
                                                 [axis](auto& a, auto& b) { return a[axis] < b[axis]; });
    return std::array{(*low)[axis], (*high)[axis]};
  };
  EXPECT_EQ((std::array{-0.6F, 1.8F}), limits(0));
  EXPECT_EQ((std::array{-0.4F, 0.4F}), limits(1));
  EXPECT_EQ((std::array{0.0F, 0.32F}), limits(2));
}

TEST_F(ChannelSample, SurfacesLieWhereTheirNamesSay) {
  for (const auto& p : nodes_of("inlet")) EXPECT_EQ(-0.6F, p[0]);
  for (const auto& p : nodes_of("outlet")) EXPECT_EQ(1.8F, p[0]);
  for (const auto& p : nodes_of("floor")) EXPECT_EQ(0.0F, p[2]);
  for (const auto& p : nodes_of("ceiling")) EXPECT_EQ(0.32F, p[2]);
  for (const auto& p : nodes_of("sides")) EXPECT_EQ(0.4F, std::abs(p[1]));
  for (const auto& p : nodes_of("obstacle")) EXPECT_NEAR(channel::kRadius, std::hypot(p[0], p[1]), 1e-8);
  for (const auto& p : nodes_of("@wake_plane")) EXPECT_EQ(0.4F, p[0]);
}

TEST_F(ChannelSample, AllFourSolidShapesAreThere) {
  std::vector<int> slots;
  for (const auto& [slot, count] : host.part(part_named("ALL_ELEMENTS")).elements) {
    slots.push_back(slot);
    EXPECT_LT(0, count);
  }
  EXPECT_EQ((std::vector<int>{14, 18, 22, 26}), slots);
}

// The corners of the cylinder's cross-section, from its nodes on the floor.
double area_of_obstacle(const Points& obstacle) {
  std::vector<std::array<double, 2>> corners;
  for (const auto& p : obstacle) {
    if (p[2] == 0.0F) corners.push_back({static_cast<double>(p[0]), static_cast<double>(p[1])});
  }
  std::sort(corners.begin(), corners.end(),
            [](const auto& a, const auto& b) { return std::atan2(a[1], a[0]) < std::atan2(b[1], b[0]); });
  double area = 0.0;
  for (std::size_t i = 0; i < corners.size(); ++i) {
    const auto& a = corners[i];
    const auto& b = corners[(i + 1) % corners.size()];
    area += 0.5 * (a[0] * b[1] - b[0] * a[1]);
  }
  return area;
}

TEST_F(ChannelSample, ElementsFillTheChannelExceptTheObstacle) {
  const double expected = 2.4 * 0.8 * 0.32 - area_of_obstacle(nodes_of("obstacle")) * 0.32;
  EXPECT_NEAR(expected, volume_of(part_named("ALL_ELEMENTS")), 1e-6);
  double sum = 0.0;
  for (const char* name : {"upstream", "around_obstacle", "wake"}) sum += volume_of(part_named(name));
  EXPECT_NEAR(expected, sum, 1e-6);
}

TEST_F(ChannelSample, OuterSurfacesAreClosedAndEncloseTheElements) {
  const Enclosed enclosed = enclosed_by(kOuterSurfaces);
  for (const double area : enclosed.area) EXPECT_NEAR(0.0, area, 1e-9);
  EXPECT_NEAR(volume_of(part_named("ALL_ELEMENTS")), enclosed.volume, 1e-7);
}

TEST_F(ChannelSample, GroupOfWallsHasTheFacesOfItsMembers) {
  std::map<int, int> faces;
  std::set<std::array<float, 3>> nodes;
  for (const char* name : {"floor", "ceiling", "sides", "obstacle"}) {
    for (const auto& [slot, count] : host.part(part_named(name)).elements) faces[slot] += count;
    for (const auto& point : nodes_of(name)) nodes.insert(point);
  }
  EXPECT_EQ(faces, host.part(part_named("&VFG_walls")).elements);
  const Points walls = nodes_of("&VFG_walls");
  EXPECT_EQ(nodes, std::set(walls.begin(), walls.end()));
}

TEST_F(ChannelSample, PressureIsTheFormulaAtTheNodesOfEveryPart) {
  for (const PartInfo& part : host.parts()) {
    const Points nodes = host.coordinates(part.id);
    const Floats values = scalar_on("Pressure", part.id);
    for (std::size_t i = 0; i < nodes.size(); ++i) {
      EXPECT_FLOAT_EQ(static_cast<float>(channel::pressure(nodes[i][0], nodes[i][1], nodes[i][2])),
                      values[i]);
    }
  }
}

TEST_F(ChannelSample, VelocityIsTheFormulaAtTheNodesOfEveryPart) {
  for (const PartInfo& part : host.parts()) {
    const Points nodes = host.coordinates(part.id);
    const Points values = vector_on("Velocity", part.id);
    for (std::size_t i = 0; i < nodes.size(); ++i) {
      const auto expected = channel::velocity(nodes[i][0], nodes[i][1], nodes[i][2]);
      for (std::size_t c = 0; c < 3; ++c) EXPECT_FLOAT_EQ(static_cast<float>(expected[c]), values[i][c]);
    }
  }
}

TEST_F(ChannelSample, FlowSlipsAlongTheObstacleAndStopsAtFloorAndCeiling) {
  const Points obstacle = nodes_of("obstacle");
  const Points velocity = vector_on("Velocity", part_named("obstacle"));
  for (std::size_t i = 0; i < obstacle.size(); ++i) {
    EXPECT_NEAR(0.0, obstacle[i][0] * velocity[i][0] + obstacle[i][1] * velocity[i][1], 1e-5);
  }
  for (const char* name : {"floor", "ceiling"}) {
    for (const auto& v : vector_on("Velocity", part_named(name)))
      EXPECT_NEAR(0.0, std::hypot(v[0], v[1], v[2]), 1e-5);
  }
}

TEST_F(ChannelSample, TemperatureIsUndefinedInTheWakesBallAlone) {
  int undefined = 0;
  for (const PartInfo& part : host.parts()) {
    const Points nodes = host.coordinates(part.id);
    const Floats values = scalar_on("Temperature", part.id);
    for (std::size_t i = 0; i < nodes.size(); ++i) {
      const double x = nodes[i][0];
      const double y = nodes[i][1];
      const double z = nodes[i][2];
      if (channel::has_temperature(x, y, z)) {
        EXPECT_FLOAT_EQ(static_cast<float>(channel::temperature(x, y, z)), values[i]);
      } else {
        EXPECT_EQ(kUndefined, values[i]);
        ++undefined;
      }
    }
  }
  EXPECT_LT(0, undefined);
}

TEST_F(ChannelSample, EachVolumeIsItsOwnMaterial) {
  float number = 0.0F;
  for (const char* name : {"upstream", "around_obstacle", "wake"}) {
    ++number;
    const int part = part_named(name);
    for (const auto& [slot, count] : host.part(part).elements) {
      EXPECT_EQ(Floats(static_cast<std::size_t>(count), number), host.materials(part, slot)) << name;
    }
  }
  const int obstacle = part_named("obstacle");
  for (const auto& [slot, count] : host.part(obstacle).elements) {
    EXPECT_EQ(Floats(static_cast<std::size_t>(count), 2.0F), host.materials(obstacle, slot));
  }
  const int plane = part_named("@wake_plane");
  for (const auto& [slot, count] : host.part(plane).elements) {
    EXPECT_EQ(Floats(static_cast<std::size_t>(count), kUndefined), host.materials(plane, slot));
  }
}

TEST_F(ChannelSample, PartGroupsAreTheWallsAndTheUndefinedPlane) {
  std::array<int, 2> toggles = {0, 1};
  api().set_extra_gui_data(toggles.data(), nullptr, nullptr);
  const std::string text = host.metadata();
  EXPECT_NE(std::string::npos, text.find("    <group name=\"Grouping_Regions\">\n"
                                         "        <part name=\"&amp;VFG_walls\"></part>\n"
                                         "    </group>\n"
                                         "    <group name=\"Undefined_Regions\">\n"
                                         "       <part name=\"@wake_plane\"></part>\n"
                                         "    </group>\n"));
}

}  // namespace
}  // namespace reader_test
