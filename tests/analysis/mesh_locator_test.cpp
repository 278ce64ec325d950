// Points in meshes: the element, the shares of its nodes, and what is outside.
#include "analysis/mesh_locator.h"

#include "gtest/gtest.h"
#include <array>
#include <cmath>
#include <numeric>
#include <set>

#include "samples/channel.h"
#include "samples/overset.h"
#include "samples/sector.h"
#include "samples/tank.h"
#include "testkit/small_meshes.h"
#include "testkit/temporary_directory.h"
#include "tests/analysis/part_mesh.h"

namespace {

using analysis::ElementAt;
using analysis::MeshLocator;
using analysis::Vec3;
using analysis_test::is_never_cylindrical;

// The place that the nodes' shares give.
Vec3 place_of(const ElementAt& found, const host::Coordinates& nodes) {
  Vec3 sum{};
  for (int i = 0; i < found.nodes; ++i) {
    const auto n = static_cast<std::size_t>(i);
    const auto node = static_cast<std::size_t>(found.node[n]);
    for (std::size_t axis = 0; axis < 3; ++axis)
      sum[axis] += found.weight[n] * static_cast<double>(nodes.axes[axis].values()[node]);
  }
  return sum;
}

TEST(MeshLocator, EachShapeHasItsPoints) {
  host_test::OpenFile file(testkit::file_of(testkit::one_of_each()));
  MeshLocator locator(file.session(), is_never_cylindrical);
  const int whole = file.part("ALL_ELEMENTS");
  const host::Coordinates nodes = file.session().coordinates(whole);
  // Tetrahedron, pyramid, prism, hexahedron: the order of a part's elements.
  const std::array<Vec3, 4> points = {{{1.2, 0.5, 1.2}, {0.4, 0.6, 1.5}, {1.5, 0.5, 0.25}, {0.3, 0.8, 0.9}}};
  for (std::size_t i = 0; i < points.size(); ++i) {
    const auto found = locator.find(points[i]);
    ASSERT_EQ(found.size(), 1U) << i;
    EXPECT_EQ(found[0].part, whole);
    EXPECT_EQ(found[0].region_set, 0);
    EXPECT_EQ(found[0].element, static_cast<std::int64_t>(i));
    const Vec3 place = place_of(found[0], nodes);
    for (std::size_t axis = 0; axis < 3; ++axis) EXPECT_NEAR(place[axis], points[i][axis], 1e-9) << i;
    EXPECT_NEAR(std::accumulate(found[0].weight.begin(), found[0].weight.end(), 0.0), 1, 1e-12);
  }
}

TEST(MeshLocator, OutsideThereIsNothing) {
  host_test::OpenFile file(testkit::file_of(testkit::one_of_each()));
  MeshLocator locator(file.session(), is_never_cylindrical);
  EXPECT_TRUE(locator.find({-1e-3, 0.5, 0.5}).empty());
  EXPECT_TRUE(locator.find({5, 5, 5}).empty());
  EXPECT_TRUE(locator.find({1.9, 0.1, 0.5}).empty());  // in the box, beside the prism
}

TEST(MeshLocator, NodesAndSurfacesBelongToTheMesh) {
  host_test::OpenFile file(testkit::file_of(testkit::one_of_each()));
  MeshLocator locator(file.session(), is_never_cylindrical);
  for (const Vec3& point : {Vec3{0, 0, 0}, Vec3{0.5, 0.5, 2}, Vec3{2, 0.5, 0}, Vec3{0.5, 0, 0.5},
                            Vec3{-1e-7, 0.5, 0.5}, Vec3{1, 0.5, 0.5}})
    EXPECT_EQ(locator.find(point).size(), 1U) << point[0] << " " << point[1] << " " << point[2];
}

// Probing the coordinates themselves, which are linear, gives the point.
TEST(MeshLocator, PlacesInTheSamples) {
  const testkit::TemporaryDirectory directory;
  const auto expect_places = [](const samples::SampleInfo& sample, const analysis::IsCylindrical& cylindrical,
                                int step, const std::vector<Vec3>& points) {
    host_test::Reader reader;
    reader.session().open(sample.file);
    reader.session().select_step(step);
    MeshLocator locator(reader.session(), cylindrical);
    for (const Vec3& point : points) {
      const auto found = locator.find(point);
      ASSERT_FALSE(found.empty()) << sample.name << " " << point[0] << " " << point[1] << " " << point[2];
      for (const ElementAt& element : found) {
        const Vec3 place =
            place_of(element, analysis::cartesian_coordinates(reader.session(), element.part, cylindrical));
        for (std::size_t axis = 0; axis < 3; ++axis) EXPECT_NEAR(place[axis], point[axis], 1e-8);
      }
    }
  };
  std::vector<Vec3> line;
  for (int i = 0; i < 200; ++i) line.push_back({-0.599 + 0.0119 * i, 0.17 + 0.001 * i, 0.011 + 0.0014 * i});
  expect_places(samples::channel::write(directory.path()), is_never_cylindrical, 0, line);
  line.clear();
  for (int i = 0; i < 100; ++i) {
    const double angle = 0.01 + 0.0102 * i;
    line.push_back({0.45 * std::cos(angle), 0.45 * std::sin(angle), 0.004 * i + 0.001});
  }
  expect_places(samples::sector::write(directory.path()), analysis_test::is_whole, 0, line);
  line.clear();
  for (int i = 0; i < 60; ++i) line.push_back({0.09 + 0.002 * i, 0.03, 0.13 + 0.001 * i});
  expect_places(samples::tank::write(directory.path()), is_never_cylindrical, 3, line);
}

TEST(MeshLocator, OversetMeshesAnswerWithTheSmallerElementFirst) {
  const testkit::TemporaryDirectory directory;
  host_test::Reader reader;
  reader.session().open(samples::overset::write(directory.path()).file);
  MeshLocator locator(reader.session(), is_never_cylindrical);
  const auto both = locator.find({0.3, 0.1, 0.07});
  ASSERT_EQ(both.size(), 2U);
  EXPECT_EQ(both[0].region_set, 1);
  EXPECT_LT(both[0].size, both[1].size);
  const auto one = locator.find({1.5, 0.5, 0.07});
  ASSERT_EQ(one.size(), 1U);
  EXPECT_EQ(one[0].region_set, 0);
}

}  // namespace
