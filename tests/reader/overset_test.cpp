// Region sets with different meshes.
#include "tests/reader/loaded_reader.h"
#include "tests/reader/small_datasets.h"

namespace reader_test {
namespace {

class Overset : public LoadedReader {
 protected:
  // A set of prisms and tetrahedra, and one of hexahedra; each with a surface, a volume and the scalar "T".
  static testkit::Mesh prisms() {
    testkit::Mesh mesh = numbered_nodes(9);
    mesh.elements.add(testkit::kPrism, {5, 4, 3, 2, 1, 0});
    mesh.elements.add(testkit::kTetrahedron, {8, 7, 6, 5});
    mesh.elements.add(testkit::kPrism, {0, 1, 2, 6, 7, 8});
    mesh.materials = {1, 2, 3};
    add_triangle_surface(mesh, "prism side", {8, 2, 5});
    mesh.surfaces[0].link = {2};
    add_volume(mesh, "prisms", {2, 1});
    return mesh;
  }
  static testkit::Mesh hexahedra() {
    testkit::Mesh mesh = numbered_nodes(16);
    for (auto& x : mesh.nodes.x.values()) x += 500.0;
    mesh.elements.add(testkit::kHexahedron, {0, 1, 2, 3, 4, 5, 6, 7});
    mesh.elements.add(testkit::kHexahedron, {15, 14, 13, 12, 11, 10, 9, 8});
    mesh.materials = {4, 5};
    add_triangle_surface(mesh, "hexahedron side", {15, 2, 9});
    mesh.surfaces[0].link = {1};
    add_volume(mesh, "hexahedra", {1});
    return mesh;
  }
  void open_sets(const std::vector<testkit::Mesh>& meshes) {
    testkit::File file = file_at(0, meshes);
    for (std::size_t g = 0; g < meshes.size(); ++g) {
      file.region_sets[g].add(
          numbered_scalar("T", static_cast<int>(meshes[g].nodes.size()), 1000.0 * static_cast<double>(g)));
      file.region_sets[g].add(
          numbered_vector("U", static_cast<int>(meshes[g].nodes.size()), 2000.0 * static_cast<double>(g)));
    }
    write_and_open(file);
  }

  // The parts of both sets; `whole` is the whole mesh of the prisms.
  void expect_prisms(int surface, int volume, int whole) {
    EXPECT_EQ((PartInfo{surface, 0, "prism side", 3, {{6, 1}}}), host.part(surface));
    EXPECT_EQ((Floats{2, 5, 8}), x_of(host.coordinates(surface)));
    EXPECT_EQ((Rows{{3, 1, 2}}), host.rows(surface, 6));
    EXPECT_EQ((Floats{3}), host.materials(surface, 6));
    EXPECT_EQ((PartInfo{volume, 0, "prisms", 7, {{14, 1}, {22, 1}}}), host.part(volume));
    EXPECT_EQ((Rows{{1, 2, 3, 5, 6, 7}}), host.rows(volume, 22));
    EXPECT_EQ((Rows{{7, 6, 5, 4}}), host.rows(volume, 14));
    EXPECT_EQ((Floats{3}), host.materials(volume, 22));
    EXPECT_EQ((PartInfo{whole, 0, "ALL_ELEMENTS", 9, {{14, 1}, {22, 2}}}), host.part(whole));
    EXPECT_EQ((Rows{{6, 5, 4, 3, 2, 1}, {1, 2, 3, 7, 8, 9}}), host.rows(whole, 22));
    EXPECT_EQ((Rows{{9, 8, 7, 6}}), host.rows(whole, 14));
    EXPECT_EQ((Floats{1, 3}), host.materials(whole, 22));
  }
  void expect_hexahedra(int surface, int volume, int whole) {
    EXPECT_EQ((PartInfo{surface, 0, "hexahedron side", 3, {{6, 1}}}), host.part(surface));
    EXPECT_EQ((Floats{502, 509, 515}), x_of(host.coordinates(surface)));
    EXPECT_EQ((Rows{{3, 1, 2}}), host.rows(surface, 6));
    EXPECT_EQ((Floats{5}), host.materials(surface, 6));
    EXPECT_EQ((PartInfo{volume, 0, "hexahedra", 8, {{26, 1}}}), host.part(volume));
    EXPECT_EQ((Rows{{8, 7, 6, 5, 4, 3, 2, 1}}), host.rows(volume, 26));
    EXPECT_EQ((Floats{5}), host.materials(volume, 26));
    EXPECT_EQ((PartInfo{whole, 0, "ALL_ELEMENTS", 16, {{26, 2}}}), host.part(whole));
    EXPECT_EQ((Rows{{1, 2, 3, 4, 5, 6, 7, 8}, {16, 15, 14, 13, 12, 11, 10, 9}}), host.rows(whole, 26));
    EXPECT_EQ((Floats{4, 5}), host.materials(whole, 26));
  }
};

TEST_F(Overset, SmallerMeshFirstIsServedWithItsOwnOffsets) {
  open_sets({prisms(), hexahedra()});
  expect_prisms(1, 3, 5);
  expect_hexahedra(2, 4, 6);
  expect_prisms(1, 3, 5);
}

TEST_F(Overset, LargerMeshFirstIsServedLikewise) {
  open_sets({hexahedra(), prisms()});
  expect_prisms(2, 4, 6);
  expect_hexahedra(1, 3, 5);
}

TEST_F(Overset, ThreeSetsOfWhichTwoAgree) {
  open_sets({hexahedra(), prisms(), hexahedra()});
  expect_hexahedra(1, 4, 7);
  expect_prisms(2, 5, 8);
  expect_hexahedra(3, 6, 9);
}

TEST_F(Overset, SetWithMoreElementsButFewerNodesIsServed) {
  testkit::Mesh many = numbered_nodes(8);
  for (int e = 0; e < 30; ++e)
    add_element(many, e % 2 == 0 ? testkit::kTetrahedron : testkit::kPyramid, e % 4);
  write_and_open(file_at(0, {many, numbered_mesh(9)}));
  const Rows pyramids = host.rows(1, 18);
  ASSERT_EQ(15U, pyramids.size());
  EXPECT_EQ((std::vector<int>{2, 3, 4, 5, 6}), pyramids[14]);
  EXPECT_EQ((Rows{{1, 2, 3, 4}}), host.rows(2, 14));
}

TEST_F(Overset, EachSetHasItsValuesWhenTheStepIsSelectedInBetween) {
  open_sets({prisms(), hexahedra()});
  EXPECT_EQ((Floats{2, 5, 8}), host.scalar(1, 1));
  EXPECT_EQ((Floats{202, 205, 208}), host.vector(2, 1, 2));
  select(2, 1);
  select(2, 0);
  EXPECT_EQ((Floats{1002, 1009, 1015}), host.scalar(1, 2));
  EXPECT_EQ((Floats{2202, 2209, 2215}), host.vector(2, 2, 2));
}

// On purpose: the cache key is the name alone.
TEST_F(Overset, SameNameInTheNextSetGetsTheValuesThatAreHeld) {
  open_sets({hexahedra(), prisms()});
  EXPECT_EQ((Floats{2, 9, 15}), host.scalar(1, 1));
  EXPECT_EQ((Floats{2, 5, 8}), host.scalar(1, 2)) << "values of the first set at nodes of the second";
  EXPECT_EQ((Floats{102, 109, 115}), host.vector(2, 1, 1));
  EXPECT_EQ((Floats{102, 105, 108}), host.vector(2, 2, 1));
}

TEST_F(Overset, NodesBeyondTheValuesThatAreHeldAreUndefined) {
  int request = 1;
  float undefined = -9.0F;
  api().get_extra_data(&request, nullptr, nullptr, nullptr, nullptr, &undefined);
  open_sets({prisms(), hexahedra()});
  EXPECT_EQ((Floats{2, 5, 8}), host.scalar(1, 1));
  EXPECT_EQ((Floats{2, -9, -9}), host.scalar(1, 2));
  EXPECT_EQ((Floats{0, 1, 2, 3, 4, 5, 6, 7, 8, -9, -9, -9, -9, -9, -9, -9}), host.scalar(1, 6));
}

TEST_F(Overset, QuantityOfOneSetAloneIsMissingInTheOther) {
  testkit::File file = file_at(0, {numbered_mesh(4), numbered_mesh(5)});
  file.region_sets[1].add(numbered_scalar("T", 5));
  file.region_sets[0].add(numbered_vector("U", 4));
  write_and_open(file);
  const Floats untouched(4, kUntouchedFloat);
  EXPECT_EQ((Floats{0, 1, 2, 3, 4}), host.scalar(1, 2));
  EXPECT_EQ((Answer{2, untouched}), host.ask({.variable = 1, .part = 1}, 4));
  EXPECT_EQ((Floats{0, 1, 2, 3}), host.vector(2, 1, 0));
  EXPECT_EQ((Answer{2, untouched}), host.ask({.variable = 2, .part = 2, .var_type = 2}, 4));
}

TEST_F(Overset, StepWithFewerRegionSetsHasNoValuesForTheOthers) {
  testkit::File first = file_at(1, {numbered_mesh(4), numbered_mesh(4)});
  for (auto& set : first.region_sets) set.add(numbered_scalar("T", 4));
  write(first, "case_1.fld");
  testkit::File second = file_at(2, {numbered_mesh(4)});
  second.region_sets[0].add(numbered_scalar("T", 4));
  write(second, "case_2.fld");
  open(in("case_1.fld"));
  select(2, 1);
  EXPECT_EQ((Floats{0, 1, 2, 3}), host.scalar(1, 1));
  EXPECT_EQ((Answer{2, {kUntouchedFloat}}), host.ask({.variable = 1, .part = 2}, 1));
}

}  // namespace
}  // namespace reader_test
