// The connectivity of parts: local node numbers from 1, element by element.
#include <limits>
#include <numeric>

#include "tests/reader/loaded_reader.h"
#include "tests/reader/small_datasets.h"

namespace reader_test {
namespace {

using testkit::file_of;

class PartConnectivity : public LoadedReader {
 protected:
  // The surface "wall" with these faces over a mesh of ten nodes.
  void open_surface(const std::vector<std::pair<std::int32_t, std::vector<std::int32_t>>>& faces) {
    testkit::Mesh mesh = numbered_mesh(10);
    testkit::Surface surface{.name = "wall"};
    for (const auto& [code, corners] : faces) surface.add(code, corners);
    mesh.surfaces = {surface};
    write_and_open(file_of(mesh));
  }
  void expect_no_row(int part, int slot) {
    const Rows rows = host.rows(part, slot, 1);
    EXPECT_EQ((Rows{std::vector<int>(rows[0].size(), kUntouchedInt)}), rows)
        << "part " << part << ", slot " << slot;
  }
};

TEST_F(PartConnectivity, FacesHaveNumbersWithinThePart) {
  open_surface({{133, {5, 9, 7}}, {134, {9, 7, 2, 5}}});
  EXPECT_EQ(4, host.part(1).nodes);
  EXPECT_EQ((Rows{{2, 4, 3}}), host.rows(1, 6));
  EXPECT_EQ((Rows{{4, 3, 1, 2}}), host.rows(1, 10));
}

TEST_F(PartConnectivity, LineFacesAreSteppedOver) {
  open_surface({{122, {0, 1}}, {133, {5, 6, 7}}, {122, {2, 3}}, {134, {6, 5, 8, 9}}, {133, {9, 8, 7}}});
  EXPECT_EQ((Rows{{1, 2, 3}, {5, 4, 3}}), host.rows(1, 6));
  EXPECT_EQ((Rows{{2, 1, 4, 5}}), host.rows(1, 10));
}

TEST_F(PartConnectivity, FacesOfUnknownCodeTakeNoNodes) {
  open_surface({{77, {}}, {133, {5, 6, 7}}});
  EXPECT_EQ((Rows{{1, 2, 3}}), host.rows(1, 6));
}

TEST_F(PartConnectivity, SurfaceHasNoSolidElements) {
  open_surface({{133, {5, 9, 7}}, {134, {9, 7, 2, 5}}});
  for (const int slot : {14, 18, 22, 26}) expect_no_row(1, slot);
}

TEST_F(PartConnectivity, VolumeOfOneTetrahedronHasNoHexahedra) {
  testkit::Mesh mesh = numbered_mesh(4);
  add_volume(mesh, "fluid", {0});
  write_and_open(file_of(mesh));
  expect_no_row(1, 26);
  EXPECT_EQ((Rows{{1, 2, 3, 4}}), host.rows(1, 14));
}

// Elements follow the volume's list, nodes the file's order within the element.
TEST_F(PartConnectivity, VolumeRowsFollowTheOrderOfItsList) {
  testkit::Mesh mesh = numbered_nodes(20);
  mesh.elements.add(testkit::kTetrahedron, {3, 1, 2, 0});
  mesh.elements.add(testkit::kPyramid, {19, 18, 17, 16, 15});
  mesh.elements.add(testkit::kTetrahedron, {8, 5, 6, 7});
  mesh.elements.add(testkit::kPrism, {10, 14, 11, 13, 12, 9});
  mesh.elements.add(testkit::kTetrahedron, {4, 8, 12, 16});
  mesh.elements.add(testkit::kHexahedron, {0, 19, 1, 18, 2, 17, 3, 16});
  add_volume(mesh, "backwards", {4, 3, 2, 1});
  write_and_open(file_of(mesh));
  EXPECT_EQ(16, host.part(1).nodes);  // nodes 4 to 19
  EXPECT_EQ((Rows{{1, 5, 9, 13}, {5, 2, 3, 4}}), host.rows(1, 14));
  EXPECT_EQ((Rows{{16, 15, 14, 13, 12}}), host.rows(1, 18));
  EXPECT_EQ((Rows{{7, 11, 8, 10, 9, 6}}), host.rows(1, 22));
  EXPECT_EQ(Rows{}, host.rows(1, 26));
}

TEST_F(PartConnectivity, WholeMeshHasTheMeshsOwnNumbersInElementOrder) {
  testkit::Mesh mesh = numbered_nodes(30);
  mesh.elements.add(testkit::kTetrahedron, {13, 11, 12, 10});
  mesh.elements.add(testkit::kHexahedron, {0, 29, 1, 28, 2, 27, 3, 26});
  mesh.elements.add(testkit::kTetrahedron, {8, 5, 6, 7});
  mesh.elements.add(testkit::kPyramid, {29, 28, 27, 26, 25});
  mesh.elements.add(testkit::kPrism, {10, 14, 11, 13, 12, 9});
  write_and_open(file_of(mesh));
  EXPECT_EQ((Rows{{14, 12, 13, 11}, {9, 6, 7, 8}}), host.rows(1, 14));
  EXPECT_EQ((Rows{{30, 29, 28, 27, 26}}), host.rows(1, 18));
  EXPECT_EQ((Rows{{11, 15, 12, 14, 13, 10}}), host.rows(1, 22));
  EXPECT_EQ((Rows{{1, 30, 2, 29, 3, 28, 4, 27}}), host.rows(1, 26));
}

// Threads share the rows of a type, wherever in the mesh its elements are.
TEST_F(PartConnectivity, ManyElementsOfATypeMayStandTogether) {
  constexpr int kEach = 200;
  testkit::Mesh mesh = numbered_nodes(kEach + 8);
  for (int e = 0; e < kEach; ++e) mesh.elements.add(testkit::kPrism, {e, e + 1, e + 2, e + 3, e + 4, e + 5});
  mesh.elements.add(testkit::kPyramid, {7, 6, 5, 4, 3});
  for (int e = 0; e < kEach; ++e) mesh.elements.add(testkit::kTetrahedron, {e + 7, e, e + 1, e + 2});
  std::vector<std::int32_t> all(2 * kEach + 1);
  std::iota(all.begin(), all.end(), 0);
  add_volume(mesh, "fluid", all);
  write_and_open(file_of(mesh));
  for (const int part : {1, 2}) {
    const Rows prisms = host.rows(part, 22);
    const Rows tetrahedra = host.rows(part, 14);
    ASSERT_EQ(static_cast<std::size_t>(kEach), prisms.size());
    ASSERT_EQ(static_cast<std::size_t>(kEach), tetrahedra.size());
    for (int e = 0; e < kEach; ++e) {
      const auto row = static_cast<std::size_t>(e);
      EXPECT_EQ((std::vector<int>{e + 1, e + 2, e + 3, e + 4, e + 5, e + 6}), prisms[row]);
      EXPECT_EQ((std::vector<int>{e + 8, e + 1, e + 2, e + 3}), tetrahedra[row]);
    }
    EXPECT_EQ((Rows{{8, 7, 6, 5, 4}}), host.rows(part, 18));
  }
}

TEST_F(PartConnectivity, FlatElementsBehindTheSolidOnesHaveTheirRows) {
  testkit::Mesh mesh = numbered_nodes(8);
  add_element(mesh, testkit::kTetrahedron, 0);
  mesh.elements.add(testkit::kTriangle, {7, 5, 6});
  add_volume(mesh, "shell", {1});
  write_and_open(file_of(mesh));
  EXPECT_EQ((Rows{{3, 1, 2}}), host.rows(1, 6));
  EXPECT_EQ((Rows{{8, 6, 7}}), host.rows(2, 6));
}

TEST_F(PartConnectivity, OtherSlotsYieldNothing) {
  testkit::Mesh mesh = testkit::one_of_each();
  write_and_open(file_of(mesh));
  for (const int part : {1, 3, 5}) {  // a surface, a volume, the whole mesh
    for (int slot = -2; slot < 40; ++slot) {
      if (host.part(part).elements.contains(slot)) continue;
      expect_no_row(part, slot);
    }
    for (const int slot : {std::numeric_limits<int>::max(), std::numeric_limits<int>::min(), 1000}) {
      expect_no_row(part, slot);
    }
  }
}

TEST_F(PartConnectivity, PartNumberOutsideTheRangeWritesNothing) {
  write_and_open(file_of(testkit::one_of_each()));
  for (const int part : {0, -1, 6, 7, std::numeric_limits<int>::max(), std::numeric_limits<int>::min()}) {
    for (const int slot : {6, 10, 14, 18, 22, 26}) {
      expect_no_row(part, slot);
      EXPECT_EQ(1, api().get_part_elements_by_type(part, slot, nullptr));
    }
  }
}

// The work tables hold one part at a time; the previous request makes no difference.
TEST_F(PartConnectivity, PartsMayBeAskedForInAnyOrder) {
  testkit::Mesh mesh = numbered_nodes(300);
  for (int e = 0; e < 60; ++e) {
    const int n = 5 * e;
    mesh.elements.add(testkit::kPyramid, {n + 4, n, n + 1, n + 2, n + 3});
  }
  add_triangle_surface(mesh, "one face", {299, 7, 100});
  testkit::Surface large{.name = "many faces"};
  for (int n = 0; n + 2 < 300; n += 2) large.add(testkit::kTriangleFace, {n + 2, n, n + 1});
  mesh.surfaces.push_back(large);
  add_volume(mesh, "one element", {50});
  std::vector<std::int32_t> odd;
  for (int e = 1; e < 60; e += 2) odd.push_back(e);
  add_volume(mesh, "every other element", odd);
  write_and_open(file_of(mesh));

  const auto slot_of = [](int part) { return part <= 2 ? 6 : 18; };
  std::vector<Rows> rows;
  std::vector<Points> points;
  for (int part = 1; part <= 5; ++part) {
    rows.push_back(host.rows(part, slot_of(part)));
    points.push_back(host.coordinates(part));
  }
  EXPECT_EQ((Rows{{3, 1, 2}}), rows[0]);
  EXPECT_EQ((Rows{{5, 1, 2, 3, 4}}), rows[2]);
  EXPECT_EQ((std::vector<int>{150, 146, 147, 148, 149}), rows[3][29]);
  EXPECT_EQ(295.0F, points[3][145][0]) << "local node 146";
  const std::array<std::size_t, 5> counts = {1, 149, 1, 30, 60};
  for (const int part : {3, 1, 5, 1, 2, 4, 3, 4, 2, 5, 5, 1}) {
    const auto i = static_cast<std::size_t>(part) - 1;
    const int nodes = static_cast<int>(points[i].size());
    EXPECT_EQ(rows[i], host.rows(part, slot_of(part), static_cast<int>(counts[i]))) << part;
    EXPECT_EQ(points[i], host.coordinates(part, nodes)) << part;
  }
  for (const int part : {2, 4, 1, 3}) {  // connectivity without any other call before it
    const auto i = static_cast<std::size_t>(part) - 1;
    EXPECT_EQ(rows[i], host.rows(part, slot_of(part), static_cast<int>(counts[i]))) << part;
  }
}

TEST_F(PartConnectivity, ConnectivityOfManyRecordsIsTheSame) {
  testkit::File file = file_of(testkit::one_of_each());
  file.split = 1;
  write_and_open(file);
  EXPECT_EQ((Rows{{1, 2, 3, 4, 5, 6, 7, 8}}), host.rows(5, 26));
  EXPECT_EQ((Rows{{2, 9, 3, 6, 10, 7}}), host.rows(5, 22));
  EXPECT_EQ((Rows{{5, 6, 7, 8, 11}}), host.rows(5, 18));
  EXPECT_EQ((Rows{{6, 10, 7, 11}}), host.rows(5, 14));
}

}  // namespace
}  // namespace reader_test
