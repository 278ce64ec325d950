// The node coordinates of parts.
#include <limits>

#include "tests/reader/loaded_reader.h"
#include "tests/reader/small_datasets.h"

namespace reader_test {
namespace {

using testkit::file_of;
using testkit::Precision;

using PartCoordinates = LoadedReader;

TEST_F(PartCoordinates, NodesOfASurfaceComeInAscendingOrder) {
  testkit::Mesh mesh = numbered_mesh(10);
  testkit::Surface surface{.name = "wall"};
  surface.add(testkit::kTriangleFace, {5, 9, 7});
  surface.add(testkit::kQuadrilateralFace, {9, 7, 2, 5});
  mesh.surfaces = {surface};
  write_and_open(file_of(mesh));
  EXPECT_EQ((Points{{2, 20, -2}, {5, 50, -5}, {7, 70, -7}, {9, 90, -9}}), host.coordinates(1));
}

TEST_F(PartCoordinates, NodesOfAVolumeComeInAscendingOrder) {
  testkit::Mesh mesh = numbered_nodes(12);
  mesh.elements.add(testkit::kTetrahedron, {11, 3, 8, 5});
  mesh.elements.add(testkit::kTetrahedron, {0, 1, 2, 3});
  add_volume(mesh, "first alone", {0});
  write_and_open(file_of(mesh));
  EXPECT_EQ((Points{{3, 30, -3}, {5, 50, -5}, {8, 80, -8}, {11, 110, -11}}), host.coordinates(1));
}

TEST_F(PartCoordinates, WholeMeshHasAllNodesAlsoThoseOfNoElement) {
  write_and_open(file_of(numbered_mesh(6)));
  EXPECT_EQ((Floats{0, 1, 2, 3, 4, 5}), x_of(host.coordinates(1)));
}

// Parts that are small compared with the mesh, and others.
TEST_F(PartCoordinates, SmallPartOfALargeMeshIsTheSameAsALargePart) {
  testkit::Mesh mesh = numbered_nodes(10000);
  std::vector<std::int32_t> all;
  for (int e = 0; e < 2500; ++e) {
    const int node = 9996 - 4 * e;
    mesh.elements.add(testkit::kTetrahedron, {node + 3, node + 1, node + 2, node});
    all.push_back(e);
  }
  add_volume(mesh, "one", {2000});
  add_volume(mesh, "two", {7, 2000});
  add_volume(mesh, "all", all);
  add_triangle_surface(mesh, "face", {9000, 10, 500});
  write_and_open(file_of(mesh));
  EXPECT_EQ((Floats{10, 500, 9000}), x_of(host.coordinates(1)));
  EXPECT_EQ((Rows{{3, 1, 2}}), host.rows(1, 6));
  EXPECT_EQ((Floats{1996, 1997, 1998, 1999}), x_of(host.coordinates(2)));
  EXPECT_EQ((Rows{{4, 2, 3, 1}}), host.rows(2, 14));
  EXPECT_EQ((Floats{1996, 1997, 1998, 1999, 9968, 9969, 9970, 9971}), x_of(host.coordinates(3)));
  EXPECT_EQ((Rows{{8, 6, 7, 5}, {4, 2, 3, 1}}), host.rows(3, 14));
  const Points points = host.coordinates(4);
  ASSERT_EQ(10000U, points.size());
  for (std::size_t i = 0; i < points.size(); ++i) EXPECT_EQ(static_cast<float>(i), points[i][0]);
  EXPECT_EQ((std::vector<int>{10000, 9998, 9999, 9997}), host.rows(4, 14)[0]);
}

TEST_F(PartCoordinates, EntryBeforeTheFirstNodeIsNotWritten) {
  write_and_open(file_of(numbered_mesh(4)));
  std::array<float, 6> x{kUntouchedFloat, 0, 0, 0, 0, kUntouchedFloat};
  auto y = x;
  auto z = x;
  std::array<float*, 3> axes = {x.data(), y.data(), z.data()};
  EXPECT_EQ(1, api().get_part_coords(1, axes.data()));
  EXPECT_EQ((std::array<float, 6>{kUntouchedFloat, 0, 1, 2, 3, kUntouchedFloat}), x);
  EXPECT_EQ((std::array<float, 6>{kUntouchedFloat, 0, 10, 20, 30, kUntouchedFloat}), y);
  EXPECT_EQ((std::array<float, 6>{kUntouchedFloat, 0, -1, -2, -3, kUntouchedFloat}), z);
}

TEST_F(PartCoordinates, DoublePrecisionIsRoundedToSingle) {
  testkit::Mesh mesh = numbered_mesh(4);
  mesh.nodes.precision = {Precision::kDouble, Precision::kDouble, Precision::kDouble};
  mesh.nodes.x.values()[0] = 0.1;
  mesh.nodes.y.values()[0] = 16777219.0;  // between 16777218 and 16777220, to the even one
  mesh.nodes.z.values()[0] = 1.0e-60;
  write_and_open(file_of(mesh));
  EXPECT_EQ((std::array<float, 3>{0.1F, 16777220.0F, 0.0F}), host.coordinates(1)[0]);
}

TEST_F(PartCoordinates, EachAxisMayHaveItsOwnPrecision) {
  testkit::Mesh mesh = numbered_mesh(4);
  mesh.nodes.precision = {Precision::kDouble, Precision::kSingle, Precision::kSingle};
  add_volume(mesh, "fluid", {0});
  write_and_open(file_of(mesh));
  const Points expected = {{0, 0, 0}, {1, 10, -1}, {2, 20, -2}, {3, 30, -3}};
  EXPECT_EQ(expected, host.coordinates(1));
  EXPECT_EQ(expected, host.coordinates(2));
}

TEST_F(PartCoordinates, ArraysSplitOverManyRecordsAreTheSame) {
  testkit::Mesh mesh = numbered_mesh(10);
  testkit::File file = file_of(mesh);
  file.split = 3;
  write_and_open(file);
  EXPECT_EQ((Floats{0, 1, 2, 3, 4, 5, 6, 7, 8, 9}), x_of(host.coordinates(1)));
}

TEST_F(PartCoordinates, SecondSectionOfNodesReplacesTheFirst) {
  testkit::File file = file_of(numbered_mesh(4));
  testkit::Mesh other = numbered_nodes(5);
  other.nodes.x.values()[0] = 123.0;
  file.region_sets[0].add(testkit::nodes_section(other.nodes));
  write_and_open(file);
  EXPECT_EQ((Floats{123, 1, 2, 3, 4}), x_of(host.coordinates(1)));
}

TEST_F(PartCoordinates, PartWithoutNodesWritesNothing) {
  testkit::Mesh mesh = numbered_mesh(4);
  add_volume(mesh, "empty", {});
  write_and_open(file_of(mesh));
  EXPECT_EQ((Points{{kUntouchedFloat, kUntouchedFloat, kUntouchedFloat}}), host.coordinates(1, 1));
  EXPECT_EQ(1, api().get_part_coords(1, nullptr));
}

TEST_F(PartCoordinates, PartNumberOutsideTheRangeWritesNothing) {
  write_and_open(file_of(testkit::one_of_each()));
  ASSERT_EQ(5, host.part_count());
  for (const int part : {0, -1, 6, 7, std::numeric_limits<int>::max(), std::numeric_limits<int>::min()}) {
    EXPECT_EQ((Points{{kUntouchedFloat, kUntouchedFloat, kUntouchedFloat}}), host.coordinates(part, 1))
        << part;
    EXPECT_EQ(1, api().get_part_coords(part, nullptr)) << part;
  }
}

}  // namespace
}  // namespace reader_test
