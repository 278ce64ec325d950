// The sample datasets: the meshes are consistent and match their description, the formulas describe a flow,
// and the files exist.
#include "samples/samples.h"

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <gtest/gtest.h>
#include <map>
#include <numbers>
#include <numeric>
#include <set>
#include <string>
#include <vector>

#include "samples/channel.h"
#include "samples/overset.h"
#include "samples/sector.h"
#include "samples/tank.h"
#include "testkit/byte_sink.h"
#include "testkit/element_faces.h"
#include "testkit/mesh_check.h"
#include "testkit/quantity.h"
#include "testkit/temporary_directory.h"
#include "tests/testkit/hex.h"
#include "tests/testkit/no_faults.h"

namespace {

using testkit::Mesh;
using testkit::Vec3;

std::map<std::int32_t, int> shapes_of(const Mesh& mesh) {
  std::map<std::int32_t, int> counts;
  for (const std::int32_t type : mesh.elements.type.values()) ++counts[type];
  return counts;
}

std::vector<std::string> surface_names(const Mesh& mesh) {
  std::vector<std::string> names;
  for (const auto& surface : mesh.surfaces) names.push_back(surface.name);
  std::sort(names.begin(), names.end());
  return names;
}

double checked_total_volume(const Mesh& mesh) {
  const auto all = testkit::volumes(mesh);
  EXPECT_GT(*std::min_element(all.begin(), all.end()), 0.0);
  return std::accumulate(all.begin(), all.end(), 0.0);
}

std::set<std::int32_t> nodes_of_volume(const Mesh& mesh, std::size_t volume) {
  const auto& elements = mesh.volumes[volume].elements.values();
  const std::set<std::int32_t> wanted(elements.begin(), elements.end());
  std::set<std::int32_t> nodes;
  testkit::for_each_element(mesh.elements, [&](std::int32_t number, std::int32_t, const auto& corners) {
    if (wanted.contains(number)) nodes.insert(corners.begin(), corners.end());
  });
  return nodes;
}

// The sum of the area vectors of some surfaces: zero if they are closed.
Vec3 total_area(const Mesh& mesh, const std::vector<std::string>& names) {
  Vec3 sum{};
  const auto point = [&](std::int32_t node) {
    const auto at = static_cast<std::size_t>(node);
    return Vec3{mesh.nodes.x.values()[at], mesh.nodes.y.values()[at], mesh.nodes.z.values()[at]};
  };
  for (const auto& surface : mesh.surfaces) {
    if (std::find(names.begin(), names.end(), surface.name) == names.end()) continue;
    std::size_t first = 0;
    for (const std::int32_t code : surface.type.values()) {
      const auto count = static_cast<std::size_t>(testkit::corner_count(code));
      for (std::size_t c = 0; c < count; ++c) {
        const Vec3 a = point(surface.node.values()[first + c]);
        const Vec3 b = point(surface.node.values()[first + (c + 1) % count]);
        sum[0] += 0.5 * (a[1] * b[2] - a[2] * b[1]);
        sum[1] += 0.5 * (a[2] * b[0] - a[0] * b[2]);
        sum[2] += 0.5 * (a[0] * b[1] - a[1] * b[0]);
      }
      first += count;
    }
  }
  return sum;
}

void expect_zero(const Vec3& vector) {
  for (const double component : vector) EXPECT_NEAR(component, 0.0, 1e-6);
}

std::size_t elements_in_volumes(const Mesh& mesh) {
  std::set<std::int32_t> all;
  std::size_t sum = 0;
  for (const auto& volume : mesh.volumes) {
    const auto& elements = volume.elements.values();
    all.insert(elements.begin(), elements.end());
    sum += elements.size();
  }
  EXPECT_EQ(all.size(), sum) << "an element is in two volumes";
  return sum;
}

TEST(ChannelSample, MeshIsOfAllShapesAndFitsTogether) {
  const Mesh mesh = samples::channel::mesh();
  EXPECT_EQ(testkit::faults(mesh), kNoFaults);
  const auto shapes = shapes_of(mesh);
  for (const auto code : {testkit::kTetrahedron, testkit::kPyramid, testkit::kPrism, testkit::kHexahedron}) {
    EXPECT_GT(shapes.at(code), 1000) << code;
  }
  EXPECT_EQ(elements_in_volumes(mesh), static_cast<std::size_t>(mesh.elements.size()));
  // The channel less a cylinder with 32 sides.
  const double cylinder = 16.0 * 0.01 * std::sin(std::numbers::pi / 16.0) * 0.32;
  EXPECT_NEAR(checked_total_volume(mesh), 2.4 * 0.8 * 0.32 - cylinder, 5e-5);
}

TEST(ChannelSample, SurfacesAreWhatTheyAreCalled) {
  Mesh mesh = samples::channel::mesh();
  EXPECT_EQ(surface_names(mesh), (std::vector<std::string>{"&VFG_walls", "@wake_plane", "ceiling", "floor",
                                                           "inlet", "obstacle", "outlet", "sides"}));
  expect_zero(total_area(mesh, {"inlet", "outlet", "floor", "ceiling", "sides", "obstacle"}));
  expect_zero(total_area(mesh, {"obstacle"}));
  EXPECT_NEAR(total_area(mesh, {"inlet"})[0], -0.8 * 0.32, 1e-6);
  EXPECT_NEAR(total_area(mesh, {"@wake_plane"})[0], 0.8 * 0.32, 1e-6);
  for (const std::int32_t node : mesh.surface("obstacle").node.values()) {
    const auto at = static_cast<std::size_t>(node);
    EXPECT_NEAR(std::hypot(mesh.nodes.x.values()[at], mesh.nodes.y.values()[at]), samples::channel::kRadius,
                1e-7);
  }
  for (const std::int32_t link : mesh.surface("@wake_plane").link.values()) EXPECT_EQ(link, -1);
}

TEST(ChannelSample, FlowFollowsTheObstacle) {
  using namespace samples::channel;
  for (int step = 0; step < 12; ++step) {
    const double angle = 0.1 + 0.5 * step;
    const double x = kRadius * std::cos(angle);
    const double y = kRadius * std::sin(angle);
    const Vec3 v = velocity(x, y, 0.1);
    EXPECT_NEAR(v[0] * x + v[1] * y, 0.0, 1e-12);
  }
  EXPECT_EQ(velocity(0.5, 0.2, 0.0)[0], 0.0);
  // Highest pressure where the flow is brought to rest.
  EXPECT_GT(pressure(-kRadius, 0.0, 0.16), pressure(-0.3, 0.0, 0.16));
  EXPECT_LT(pressure(0.0, kRadius, 0.16), pressure(-0.3, 0.0, 0.16));
  EXPECT_GT(temperature(0.2, 0.0, 0.1), temperature(0.2, 0.3, 0.1));
}

TEST(ChannelSample, TemperatureHasAHole) {
  const Mesh mesh = samples::channel::mesh();
  const auto known = testkit::at_nodes(mesh.nodes, samples::channel::has_temperature);
  const auto unknown = std::count(known.begin(), known.end(), 0.0);
  EXPECT_GT(unknown, 20);
  EXPECT_LT(unknown, mesh.nodes.size() / 10);
}

// The smallest distance of a node to a discontinuity of a formula.
template <class Distance>
double nearest(const Mesh& mesh, Distance distance) {
  const auto all = testkit::at_nodes(mesh.nodes, distance);
  return *std::min_element(all.begin(), all.end());
}

TEST(Samples, RoundingDoesNotDecideWhereValuesAreUndefined) {
  const double from_ball = nearest(samples::channel::mesh(), [](double x, double y, double z) {
    return std::abs(std::hypot(x - 0.9, y, z - 0.16) - 0.105);
  });
  EXPECT_GT(from_ball, 1e-4);
  const double from_circles = nearest(samples::overset::background_mesh(), [](double x, double y, double) {
    return std::min(std::abs(std::hypot(x, y) - 0.38), std::abs(std::hypot(x, y) - 0.46));
  });
  EXPECT_GT(from_circles, 1e-4);
  // The formulas are discontinuous at the circles.
  EXPECT_TRUE(samples::overset::is_blanked(0.3799, 0.0));
  EXPECT_FALSE(samples::overset::is_blanked(0.3801, 0.0));
  EXPECT_EQ(samples::overset::background_fringe(0.4599, 0.0, 0.0), 1.0);
  EXPECT_EQ(samples::overset::background_fringe(0.4601, 0.0, 0.0), 0.0);
  EXPECT_FALSE(samples::channel::has_temperature(1.0049, 0.0, 0.16));
  EXPECT_TRUE(samples::channel::has_temperature(1.0051, 0.0, 0.16));
}

TEST(TankSample, ZonesShareNoNode) {
  const Mesh mesh = samples::tank::mesh();
  ASSERT_EQ(mesh.volumes.size(), 2U);
  EXPECT_EQ(elements_in_volumes(mesh), static_cast<std::size_t>(mesh.elements.size()));
  const auto impeller = nodes_of_volume(mesh, 0);
  const auto tank = nodes_of_volume(mesh, 1);
  EXPECT_EQ(impeller.size() + tank.size(), static_cast<std::size_t>(mesh.nodes.size()));
  EXPECT_LT(*impeller.rbegin(), *tank.begin());
}

TEST(TankSample, MeshFitsTogether) {
  const Mesh mesh = samples::tank::mesh();
  EXPECT_EQ(testkit::faults(mesh), kNoFaults);
  EXPECT_GT(mesh.elements.size(), 5000);
  const auto shapes = shapes_of(mesh);
  EXPECT_EQ(shapes.size(), 2U);
  EXPECT_GT(shapes.at(testkit::kPrism), 300);
  // All but the polygons' gaps and the solid parts.
  const double cylinder = std::numbers::pi * 0.25 * 0.25 * 0.5;
  const double volume = checked_total_volume(mesh);
  EXPECT_LT(volume, cylinder);
  EXPECT_GT(volume, 0.97 * cylinder);
}

TEST(TankSample, SurfacesClose) {
  const Mesh mesh = samples::tank::mesh();
  std::vector<std::string> expected{"&VFG_impeller", "@sliding",  "baffles",          "disc",
                                    "hub",           "shaft",     "sliding_impeller", "sliding_tank",
                                    "tank_bottom",   "tank_wall", "water_surface"};
  for (int blade = 1; blade <= 6; ++blade) expected.push_back("blade_" + std::to_string(blade));
  std::sort(expected.begin(), expected.end());
  EXPECT_EQ(surface_names(mesh), expected);
  expect_zero(total_area(mesh, {"blade_1", "blade_2", "blade_3", "blade_4", "blade_5", "blade_6", "disc",
                                "hub", "sliding_impeller"}));
  expect_zero(
      total_area(mesh, {"baffles", "shaft", "sliding_tank", "tank_bottom", "tank_wall", "water_surface"}));
}

TEST(TankSample, BladesStandEverySixtyDegrees) {
  Mesh mesh = samples::tank::mesh();
  for (int blade = 1; blade <= 6; ++blade) {
    const double middle = (blade - 1) * std::numbers::pi / 3.0;
    const auto& nodes = mesh.surface("blade_" + std::to_string(blade)).node.values();
    ASSERT_GT(nodes.size(), 40U);
    for (const std::int32_t node : nodes) {
      const auto at = static_cast<std::size_t>(node);
      const double x = mesh.nodes.x.values()[at];
      const double y = mesh.nodes.y.values()[at];
      EXPECT_NEAR(std::remainder(std::atan2(y, x) - middle, 2.0 * std::numbers::pi), 0.0, 0.027);
    }
  }
}

TEST(TankSample, ImpellerTurnsAndCarriesTheFlowWithIt) {
  using namespace samples::tank;
  EXPECT_EQ(angle(time_of_step(0)), 0.0);
  EXPECT_NEAR(angle(time_of_step(1)), std::numbers::pi / 12.0, 1e-12);
  // After a sixth of a turn the blades' wave is the same; in between it is not.
  const double passage = 0.1;
  const auto wave = [](double time) {
    return velocity(0.08, 0.0, 0.18, time)[1] / velocity(0.08, 0.0, 0.4, time)[1];
  };
  EXPECT_NEAR(wave(passage), wave(2.0 * passage), 1e-9);
  EXPECT_GT(std::abs(wave(passage) - wave(1.5 * passage)), 0.1);
  // In the impeller's frame the flow only gets faster, everywhere by the same factor; far above there is no
  // wave.
  const double turned = angle(0.04);
  const double faster = velocity(0.08, 0.0, 0.4, 0.04)[1] / velocity(0.08, 0.0, 0.4, 0.0)[1];
  EXPECT_NEAR(velocity(0.08 * std::cos(turned), 0.08 * std::sin(turned), 0.17, 0.04)[2] /
                  velocity(0.08, 0.0, 0.17, 0.0)[2],
              faster, 1e-5);
}

TEST(OversetSample, MeshesFitTogetherAndDiffer) {
  const Mesh background = samples::overset::background_mesh();
  const Mesh ring = samples::overset::ring_mesh();
  EXPECT_EQ(testkit::faults(background), kNoFaults);
  EXPECT_EQ(testkit::faults(ring), kNoFaults);
  EXPECT_EQ(shapes_of(background), (std::map<std::int32_t, int>{{testkit::kHexahedron, 7200}}));
  EXPECT_EQ(shapes_of(ring), (std::map<std::int32_t, int>{{testkit::kPrism, 6048}}));
  EXPECT_NEAR(checked_total_volume(background), 3.0 * 2.0 * 0.15, 1e-10);
  const double sides = 72.0 * 0.5 * std::sin(2.0 * std::numbers::pi / 72.0);
  EXPECT_NEAR(checked_total_volume(ring), sides * (0.6 * 0.6 - 0.25 * 0.25) * 0.15, 1e-10);
  expect_zero(total_area(ring, {"cylinder", "ring_rim", "ring_floor", "ring_ceiling"}));
}

TEST(OversetSample, MarksFringeAndBlankedNodes) {
  const Mesh background = samples::overset::background_mesh();
  const Mesh ring = samples::overset::ring_mesh();
  const auto sum = [](const std::vector<double>& marks) {
    return std::accumulate(marks.begin(), marks.end(), 0.0);
  };
  EXPECT_EQ(sum(testkit::at_nodes(ring.nodes, samples::overset::ring_fringe)), 72 * 4);
  const double fringe = sum(testkit::at_nodes(background.nodes, samples::overset::background_fringe));
  const double blanked = sum(testkit::at_nodes(background.nodes, [](double x, double y, double) {
    return samples::overset::is_blanked(x, y) ? 1.0 : 0.0;
  }));
  EXPECT_GT(fringe, 200.0);
  EXPECT_GT(blanked, 500.0);
  // Every node inside the cylinder is blanked, so the formulas are never taken there.
  EXPECT_TRUE(samples::overset::is_blanked(samples::overset::kRadius, 0.0));
}

TEST(SectorSample, MeshIsCylindricalAndFitsTogether) {
  const Mesh mesh = samples::sector::mesh();
  EXPECT_EQ(mesh.coordinate_system, 1);
  EXPECT_EQ(testkit::faults(mesh), kNoFaults);
  EXPECT_EQ(shapes_of(mesh),
            (std::map<std::int32_t, int>{{testkit::kPrism, 6144}, {testkit::kHexahedron, 3072}}));
  // In stored coordinates, and in space: the sum over the cells of an annulus with straight sides.
  EXPECT_NEAR(checked_total_volume(mesh), 0.3 * std::numbers::pi / 3.0 * 0.4, 1e-6);
  Mesh in_space = mesh;
  for (std::size_t n = 0; n < mesh.nodes.x.values().size(); ++n) {
    const double radius = mesh.nodes.x.values()[n];
    const double angle = mesh.nodes.y.values()[n];
    in_space.nodes.x.values()[n] = radius * std::cos(angle);
    in_space.nodes.y.values()[n] = radius * std::sin(angle);
  }
  EXPECT_EQ(testkit::faults(in_space), kNoFaults);
  EXPECT_NEAR(checked_total_volume(in_space),
              24.0 * 0.5 * std::sin(std::numbers::pi / 72.0) * (0.6 * 0.6 - 0.3 * 0.3) * 0.4, 1e-6);
}

TEST(SectorSample, FlowSwirlsAroundTheAxis) {
  using namespace samples::sector;
  const Vec3 v = velocity(0.3, 0.4, 0.1);
  EXPECT_NEAR(v[0] * 0.3 + v[1] * 0.4, 0.0, 1e-12);
  EXPECT_NEAR(std::hypot(v[0], v[1]), 12.0, 1e-12);
  EXPECT_NEAR(velocity(0.6, 0.0, 0.1)[2], 0.0, 1e-12);
  EXPECT_LT(pressure(0.3, 0.0, 0.1), pressure(0.6, 0.0, 0.1));
}

TEST(Samples, AreWrittenWithTheirDescriptions) {
  const testkit::TemporaryDirectory directory;
  const auto infos = samples::write_samples(directory / "below/here");
  ASSERT_EQ(infos.size(), 4U);
  std::uintmax_t total = 0;
  for (const auto& info : infos) {
    EXPECT_TRUE(std::filesystem::exists(info.file)) << info.name;
    EXPECT_EQ(info.file.parent_path().filename(), info.name);
    EXPECT_FALSE(info.description.empty());
    EXPECT_EQ(info.description.find('\n'), std::string::npos);
  }
  for (const auto& entry : std::filesystem::recursive_directory_iterator(directory.path())) {
    if (entry.is_regular_file()) total += entry.file_size();
  }
  EXPECT_LT(total, 10'000'000U);
}

// The titles of a file's sections, found by the length of a title record and its prefix.
std::vector<std::string> section_titles(const std::filesystem::path& path) {
  const std::string bytes = testkit::read_bytes(path);
  std::vector<std::string> titles;
  const std::string start = hex("00000020 'LS_'");
  for (auto at = bytes.find(start); at != std::string::npos; at = bytes.find(start, at + 1)) {
    std::string title = bytes.substr(at + 4, 32);
    title.erase(title.find_last_not_of(' ') + 1);
    titles.push_back(title);
  }
  return titles;
}

TEST(Samples, TankHasItsGeometryInTheFirstFileAlone) {
  const testkit::TemporaryDirectory directory;
  const auto info = samples::tank::write(directory.path());
  EXPECT_EQ(info.file.filename(), "tank_0.fld");
  const std::vector<std::string> quantities{"LS_Scalar:Pressure", "LS_Scalar:Temperature",
                                            "LS_Vector:Velocity"};
  std::vector<std::string> expected{"LS_SurfaceGeometryArray", "LS_VolumeGeometryArray", "LS_Elements",
                                    "LS_MatOfElements", "LS_Nodes"};
  expected.insert(expected.end(), quantities.begin(), quantities.end());
  EXPECT_EQ(section_titles(info.file), expected);
  expected.assign({"LS_ALE"});
  expected.insert(expected.end(), quantities.begin(), quantities.end());
  for (int step = 1; step < samples::tank::kSteps; ++step) {
    EXPECT_EQ(section_titles(directory.path() / "tank" / samples::tank::file_name(step)), expected) << step;
  }
}

}  // namespace
