// The parts and their counts.
#include <string>
#include <vector>

#include "tests/reader/loaded_reader.h"
#include "tests/reader/small_datasets.h"

namespace reader_test {
namespace {

using testkit::file_of;

using PartBuilding = LoadedReader;

TEST_F(PartBuilding, SurfacesComeFirstThenVolumesThenTheWholeMesh) {
  testkit::Mesh mesh = numbered_mesh(6);
  add_triangle_surface(mesh, "inlet", {0, 1, 2});
  add_triangle_surface(mesh, "outlet", {3, 4, 5});
  add_volume(mesh, "fluid", {0});
  write_and_open(file_of(mesh));
  EXPECT_EQ(4, host.part_count());
  EXPECT_EQ((std::vector<PartInfo>{{1, 0, "inlet", 3, {{6, 1}}},
                                   {2, 0, "outlet", 3, {{6, 1}}},
                                   {3, 0, "fluid", 4, {{14, 1}}},
                                   {4, 0, "ALL_ELEMENTS", 6, {{14, 1}}}}),
            host.parts());
}

TEST_F(PartBuilding, EachKindRunsThroughAllRegionSets) {
  testkit::Mesh first = numbered_mesh(6);
  add_triangle_surface(first, "surface A", {0, 1, 2});
  add_volume(first, "volume A", {0});
  testkit::Mesh second = numbered_mesh(5);
  add_triangle_surface(second, "surface B", {4, 1, 2});
  add_volume(second, "volume B", {0});
  write_and_open(file_at(0, {first, second}));
  EXPECT_EQ((std::vector<PartInfo>{{1, 0, "surface A", 3, {{6, 1}}},
                                   {2, 0, "surface B", 3, {{6, 1}}},
                                   {3, 0, "volume A", 4, {{14, 1}}},
                                   {4, 0, "volume B", 4, {{14, 1}}},
                                   {5, 0, "ALL_ELEMENTS", 6, {{14, 1}}},
                                   {6, 0, "ALL_ELEMENTS", 5, {{14, 1}}}}),
            host.parts());
}

TEST_F(PartBuilding, RegionSetsWithDifferentNumbersOfRegionsKeepTheirOrder) {
  testkit::Mesh bare = numbered_mesh(4);
  testkit::Mesh middle = numbered_mesh(4);
  for (const char* name : {"b1", "b2"}) add_triangle_surface(middle, name, {0, 1, 2});
  add_volume(middle, "b3", {0});
  testkit::Mesh last = numbered_mesh(4);
  add_triangle_surface(last, "c1", {0, 1, 2});
  for (const char* name : {"c2", "c3"}) add_volume(last, name, {0});
  write_and_open(file_at(0, {bare, middle, last}));
  EXPECT_EQ((std::vector<std::string>{"b1", "b2", "c1", "b3", "c2", "c3", "ALL_ELEMENTS", "ALL_ELEMENTS",
                                      "ALL_ELEMENTS"}),
            host.part_names());
}

TEST_F(PartBuilding, MeshWithoutRegionsIsOnePart) {
  testkit::File file = file_of(numbered_mesh(4));
  file.region_sets[0].remove("LS_SurfaceGeometry");
  file.region_sets[0].remove("LS_VolumeGeometry");
  write_and_open(file);
  EXPECT_EQ((std::vector<PartInfo>{{1, 0, "ALL_ELEMENTS", 4, {{14, 1}}}}), host.parts());
}

TEST_F(PartBuilding, RegionSetWithoutElementsIsAnEmptyOneBesideALargerOne) {
  testkit::Mesh small = numbered_nodes(3);
  add_triangle_surface(small, "wall", {0, 1, 2});
  add_volume(small, "nothing", {});
  testkit::File file = file_at(0, {numbered_mesh(4), small});
  file.region_sets[1].remove("LS_Elements");
  write_and_open(file);
  EXPECT_EQ((std::vector<PartInfo>{{1, 0, "wall", 3, {{6, 1}}},
                                   {2, 0, "nothing", 0, {}},
                                   {3, 0, "ALL_ELEMENTS", 4, {{14, 1}}},
                                   {4, 0, "ALL_ELEMENTS", 3, {}}}),
            host.parts());
}

TEST_F(PartBuilding, NamesAreCutAt79Characters) {
  testkit::Mesh mesh = numbered_mesh(4);
  const std::string hundred = std::string(79, 'x') + std::string(21, 'y');
  add_triangle_surface(mesh, hundred, {0, 1, 2});
  add_triangle_surface(mesh, std::string(79, 's'), {0, 1, 2});
  add_triangle_surface(mesh, std::string(80, 't'), {0, 1, 2});
  add_volume(mesh, std::string(5000, 'v'), {0});
  write_and_open(file_of(mesh));
  EXPECT_EQ((std::vector<std::string>{std::string(79, 'x'), std::string(79, 's'), std::string(79, 't'),
                                      std::string(79, 'v'), "ALL_ELEMENTS"}),
            host.part_names());
}

TEST_F(PartBuilding, TrailingBlanksOfANameAreNotPartOfIt) {
  testkit::Mesh mesh = numbered_mesh(4);
  add_triangle_surface(mesh, "wall", {0, 1, 2});
  add_triangle_surface(mesh, " in front", {0, 1, 2});
  add_triangle_surface(mesh, "", {0, 1, 2});
  write_and_open(file_of(mesh, {.name_length = 16}));
  EXPECT_EQ((std::vector<std::string>{"wall", " in front", "", "ALL_ELEMENTS"}), host.part_names());
}

TEST_F(PartBuilding, BytesOfANameArePassedOnAsTheyStand) {
  testkit::Mesh mesh = numbered_mesh(4);
  const std::string shift_jis = "\x97\xac\x91\xcc_1";
  add_volume(mesh, shift_jis, {0});
  write_and_open(file_of(mesh));
  EXPECT_EQ(shift_jis, host.part(1).name);
}

// Line 0-1, triangle 1-2-3: node 0 belongs only to the line.
TEST_F(PartBuilding, LineFacesCountNeitherNodesNorElements) {
  testkit::Mesh mesh = numbered_mesh(5);
  testkit::Surface surface{.name = "edge and face"};
  surface.add(testkit::kLineFace, {0, 1});
  surface.add(testkit::kTriangleFace, {1, 2, 3});
  mesh.surfaces = {surface};
  write_and_open(file_of(mesh));
  EXPECT_EQ((PartInfo{1, 0, "edge and face", 3, {{6, 1}}}), host.part(1));
}

TEST_F(PartBuilding, SurfaceOfLinesAloneIsAPartWithoutNodes) {
  testkit::Mesh mesh = numbered_mesh(4);
  testkit::Surface surface{.name = "edges"};
  surface.add(testkit::kLineFace, {0, 1});
  surface.add(testkit::kLineFace, {1, 2});
  mesh.surfaces = {surface};
  write_and_open(file_of(mesh));
  EXPECT_EQ((PartInfo{1, 0, "edges", 0, {}}), host.part(1));
}

TEST_F(PartBuilding, TrianglesAndQuadrilateralsOfASurfaceAreCountedApart) {
  testkit::Mesh mesh = numbered_mesh(10);
  testkit::Surface surface{.name = "mixed"};
  surface.add(testkit::kQuadrilateralFace, {6, 7, 8, 9});
  surface.add(testkit::kTriangleFace, {1, 2, 3});
  surface.add(testkit::kLineFace, {0, 5});
  surface.add(testkit::kQuadrilateralFace, {1, 2, 8, 9});
  mesh.surfaces = {surface};
  write_and_open(file_of(mesh));
  EXPECT_EQ((PartInfo{1, 0, "mixed", 7, {{6, 1}, {10, 2}}}), host.part(1));
}

TEST_F(PartBuilding, EveryShapeHasItsSlot) {
  testkit::Mesh mesh = numbered_nodes(8);
  for (const auto code : {testkit::kHexahedron, testkit::kTetrahedron, testkit::kPyramid, testkit::kPyramid,
                          testkit::kPrism, testkit::kPrism, testkit::kPrism}) {
    add_element(mesh, code, 0);
  }
  add_volume(mesh, "some", {1, 2, 4, 6});
  write_and_open(file_of(mesh));
  EXPECT_EQ((PartInfo{1, 0, "some", 6, {{14, 1}, {18, 1}, {22, 2}}}), host.part(1));
  EXPECT_EQ((PartInfo{2, 0, "ALL_ELEMENTS", 8, {{14, 1}, {18, 2}, {22, 3}, {26, 1}}}), host.part(2));
}

// The offset table only counts solid shapes; triangles and quadrilaterals after them are still in their
// slots.
TEST_F(PartBuilding, FlatElementsAreCountedInTheirSlotsAndReported) {
  testkit::Mesh mesh = numbered_nodes(8);
  add_element(mesh, testkit::kTetrahedron, 0);
  add_element(mesh, testkit::kTriangle, 4);
  add_element(mesh, testkit::kQuadrilateral, 4);
  add_volume(mesh, "shell", {1, 2});
  const auto path = write(file_of(mesh));
  EXPECT_EQ(trace(path) + trace(path) +
                "HANDLING AN INVALID DATA TYPE(1000174).HANDLING AN INVALID DATA TYPE(1000174).read done\n",
            stderr_of([&] { EXPECT_EQ(1, host.open(path)); }));
  EXPECT_EQ((std::map<int, int>{{6, 1}, {10, 1}}), host.part(1).elements);
  EXPECT_EQ((std::map<int, int>{{6, 1}, {10, 1}, {14, 1}}), host.part(2).elements);
}

TEST_F(PartBuilding, ElementsOfUnknownCodeAreCountedNowhere) {
  testkit::Mesh mesh = numbered_mesh(6);
  for (const int code : {0, -1, 37, 133, 134, 255, 256, 1 << 30}) mesh.elements.add(code, {});
  add_element(mesh, testkit::kTetrahedron, 2);
  add_volume(mesh, "all", {0, 1, 2, 3, 4, 5, 6, 7, 8, 9});
  write_and_open(file_of(mesh));
  EXPECT_EQ((PartInfo{1, 0, "all", 6, {{14, 2}}}), host.part(1));
  EXPECT_EQ((PartInfo{2, 0, "ALL_ELEMENTS", 6, {{14, 2}}}), host.part(2));
  EXPECT_EQ((Rows{{1, 2, 3, 4}, {3, 4, 5, 6}}), host.rows(1, 14));
}

TEST_F(PartBuilding, FacesOfUnknownCodeAreCountedNowhere) {
  testkit::Mesh mesh = numbered_mesh(6);
  testkit::Surface surface{.name = "odd"};
  for (const int code : {0, -1, 23, 135, 1 << 30}) surface.add(code, {});
  surface.add(testkit::kTriangleFace, {3, 4, 5});
  mesh.surfaces = {surface};
  write_and_open(file_of(mesh));
  EXPECT_EQ((PartInfo{1, 0, "odd", 3, {{6, 1}}}), host.part(1));
  EXPECT_EQ((Rows{{1, 2, 3}}), host.rows(1, 6));
}

TEST_F(PartBuilding, RepeatedNodesOfAnElementAreCountedOnce) {
  testkit::Mesh mesh = numbered_nodes(8);
  mesh.elements.add(testkit::kHexahedron, {0, 1, 2, 2, 4, 5, 6, 6});
  add_volume(mesh, "wedge", {0});
  write_and_open(file_of(mesh));
  EXPECT_EQ((PartInfo{1, 0, "wedge", 6, {{26, 1}}}), host.part(1));
}

TEST_F(PartBuilding, ElementNamedTwiceByAVolumeCountsTwice) {
  testkit::Mesh mesh = numbered_mesh(4);
  add_volume(mesh, "twice", {0, 0});
  write_and_open(file_of(mesh));
  EXPECT_EQ((PartInfo{1, 0, "twice", 4, {{14, 2}}}), host.part(1));
  EXPECT_EQ((Rows{{1, 2, 3, 4}, {1, 2, 3, 4}}), host.rows(1, 14));
}

TEST_F(PartBuilding, BlockDimensionsAndBlankingMayBeNull) {
  write_and_open(file_of(numbered_mesh(4)));
  int id = 0;
  int type = 0;
  int nodes = 0;
  std::string description(80, kUntouchedChar);
  char* description_row = description.data();
  std::vector<int> counts(34);
  int* count_row = counts.data();
  EXPECT_EQ(
      1, api().get_gold_part_build_info(&id, &type, &description_row, &nodes, &count_row, nullptr, nullptr));
  EXPECT_EQ(1, id);
  EXPECT_EQ(4, nodes);
}

TEST_F(PartBuilding, AskingWritesNothingToTheErrorStreamAndGivesTheSameAgain) {
  write_and_open(file_of(testkit::one_of_each()));
  const auto parts = host.parts();
  EXPECT_EQ("", stderr_of([&] { EXPECT_EQ(parts, host.parts()); }));
}

}  // namespace
}  // namespace reader_test
