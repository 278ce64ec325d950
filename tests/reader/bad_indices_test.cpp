// Node and element indices that are out of range: they are ignored, and the rows are still written, with node
// 1 in their place.
#include <limits>
#include <numeric>
#include <string>

#include "tests/reader/loaded_reader.h"
#include "tests/reader/small_datasets.h"

namespace reader_test {
namespace {

using testkit::Block;
using testkit::file_of;
using testkit::Ints;

constexpr int kMax = std::numeric_limits<int>::max();
constexpr int kMin = std::numeric_limits<int>::min();

// `count` numbers from `first`.
std::vector<int> counted_from(int first, int count) {
  std::vector<int> numbers(static_cast<std::size_t>(count));
  std::iota(numbers.begin(), numbers.end(), first);
  return numbers;
}

std::vector<int> with_ends(std::vector<int> row, int first, int last) {
  row.front() = first;
  row.back() = last;
  return row;
}

class BadIndices : public LoadedReader {
 protected:
  // Opens the file, which must succeed, and returns the warnings.
  std::string warnings_of(const testkit::File& file) {
    const auto path = write(file);
    const std::string text = stderr_of([&] { EXPECT_EQ(1, host.open(path)); });
    const std::string before = trace(path) + trace(path);
    const std::string after = "read done\n";
    EXPECT_TRUE(text.starts_with(before) && text.ends_with(after)) << text;
    return text.substr(before.size(), text.size() - before.size() - after.size());
  }
  std::string warning(int count, const std::string& what) const {
    return "WARNING : " + std::to_string(count) + " " + what + " IN " + in("case.fld").string() + "\n";
  }
};

TEST_F(BadIndices, RightIndicesGiveNoWarning) {
  EXPECT_EQ("", warnings_of(file_of(testkit::one_of_each())));
}

TEST_F(BadIndices, NodesOfElementsOutsideTheMeshBecomeNode1) {
  testkit::Mesh mesh = numbered_nodes(6);
  mesh.elements.add(testkit::kTetrahedron, {5, 6, kMax, 4});
  mesh.elements.add(testkit::kTetrahedron, {-1, 3, kMin, 2});
  add_volume(mesh, "both", {0, 1});
  EXPECT_EQ(warning(4, "NODE NUMBERS OF ELEMENTS OUT OF RANGE"), warnings_of(file_of(mesh)));
  EXPECT_EQ((PartInfo{1, 0, "both", 4, {{14, 2}}}), host.part(1));
  EXPECT_EQ((Floats{2, 3, 4, 5}), x_of(host.coordinates(1)));
  EXPECT_EQ((Rows{{4, 1, 1, 3}, {1, 2, 1, 1}}), host.rows(1, 14));
  EXPECT_EQ((Rows{{6, 1, 1, 5}, {1, 4, 1, 3}}), host.rows(2, 14));
}

// With index base 1, index 0 is out of range, and the smallest integer must not wrap to a large one.
TEST_F(BadIndices, IndexBaseIsSubtractedBeforeTheyAreLookedAt) {
  testkit::File file = file_of(numbered_mesh(6));
  file.header.set_bias(1);
  file.region_sets[0].section("LS_Elements").blocks[3] = Block::integers({1, 0, 6, kMin});
  EXPECT_EQ(warning(2, "NODE NUMBERS OF ELEMENTS OUT OF RANGE"), warnings_of(file));
  EXPECT_EQ((Rows{{1, 1, 6, 1}}), host.rows(1, 14));
}

TEST_F(BadIndices, ConnectivityThatIsTooShortIsFilledUpWithNode1) {
  testkit::Mesh mesh = numbered_nodes(9);
  for (const int first : {0, 4, 5}) add_element(mesh, testkit::kTetrahedron, first);
  add_volume(mesh, "all", {2, 1, 0});
  testkit::File file = file_of(mesh);
  auto& blocks = file.region_sets[0].section("LS_Elements").blocks;
  blocks[2] = Block::long_integer(6);
  blocks[3] = Block::integers({0, 1, 2, 3, 4, 5});
  EXPECT_EQ(warning(6, "NODE NUMBERS OF ELEMENTS MISSING"), warnings_of(file));
  EXPECT_EQ((PartInfo{1, 0, "all", 6, {{14, 3}}}), host.part(1));
  EXPECT_EQ((Rows{{1, 1, 1, 1}, {5, 6, 1, 1}, {1, 2, 3, 4}}), host.rows(1, 14));
  EXPECT_EQ((Rows{{1, 2, 3, 4}, {5, 6, 1, 1}, {1, 1, 1, 1}}), host.rows(2, 14));
}

TEST_F(BadIndices, MissingConnectivityGivesRowsOfNode1) {
  testkit::Mesh mesh = numbered_mesh(5);
  add_volume(mesh, "all", {0});
  testkit::File file = file_of(mesh);
  auto& blocks = file.region_sets[0].section("LS_Elements").blocks;
  blocks[2] = Block::long_integer(0);
  blocks[3] = Block::integers(Ints{});
  EXPECT_EQ(warning(4, "NODE NUMBERS OF ELEMENTS MISSING"), warnings_of(file));
  EXPECT_EQ((PartInfo{1, 0, "all", 0, {{14, 1}}}), host.part(1));
  EXPECT_EQ((Rows{{1, 1, 1, 1}}), host.rows(1, 14));
  EXPECT_EQ((Rows{{1, 1, 1, 1}}), host.rows(2, 14));
}

// With and without nodes before those of the volume, so that its numbering differs from the mesh's or not.
TEST_F(BadIndices, RowsOfEveryShapeHaveNode1ForNodesOutsideTheMesh) {
  for (const auto& [code, slot] : {std::pair{testkit::kTetrahedron, 14},
                                   {testkit::kPyramid, 18},
                                   {testkit::kPrism, 22},
                                   {testkit::kHexahedron, 26}}) {
    const int count = testkit::corner_count(code);
    for (const int before : {0, 2}) {
      SCOPED_TRACE("code " + std::to_string(code) + ", nodes before " + std::to_string(before));
      testkit::Mesh mesh = numbered_nodes(before + count);
      mesh.elements.add(testkit::kTetrahedron, {0, 1, 2, 0});
      add_element(mesh, code, before);
      mesh.elements.add(code, with_ends(counted_from(before, count), before + count, -1));
      add_volume(mesh, "part", {2, 1});
      EXPECT_EQ(warning(2, "NODE NUMBERS OF ELEMENTS OUT OF RANGE"), warnings_of(file_of(mesh)));

      const std::vector<int> in_part = counted_from(1, count);
      EXPECT_EQ((Rows{with_ends(in_part, 1, 1), in_part}), host.rows(1, slot));
      const std::vector<int> in_mesh = counted_from(before + 1, count);
      Rows expected = {in_mesh, with_ends(in_mesh, 1, 1)};
      if (code == testkit::kTetrahedron) expected.insert(expected.begin(), {1, 2, 3, 1});
      EXPECT_EQ(expected, host.rows(2, slot));
    }
  }
}

TEST_F(BadIndices, RowsOfFlatElementsToo) {
  for (const auto& [code, slot] : {std::pair{testkit::kTriangle, 6}, {testkit::kQuadrilateral, 10}}) {
    const int count = testkit::corner_count(code);
    for (const int before : {0, 2}) {
      SCOPED_TRACE("code " + std::to_string(code) + ", nodes before " + std::to_string(before));
      testkit::Mesh mesh = numbered_nodes(before + count - 1);
      mesh.elements.add(testkit::kTetrahedron, {0, 1, 0, 1});
      add_element(mesh, code, before);
      add_volume(mesh, "shell", {1});
      write_and_open(file_of(mesh));
      EXPECT_EQ((Rows{with_ends(counted_from(1, count), 1, 1)}), host.rows(1, slot));
      EXPECT_EQ((Rows{with_ends(counted_from(before + 1, count), before + 1, 1)}), host.rows(2, slot));
    }
  }
}

TEST_F(BadIndices, NodesOfFacesOutsideTheMeshBecomeNode1) {
  testkit::Mesh mesh = numbered_mesh(6);
  testkit::Surface surface{.name = "wall"};
  surface.add(testkit::kTriangleFace, {3, 6, 5});
  surface.add(testkit::kQuadrilateralFace, {-1, 4, kMax, kMin});
  mesh.surfaces = {surface};
  EXPECT_EQ(warning(4, "NODE NUMBERS OF FACES OUT OF RANGE"), warnings_of(file_of(mesh)));
  EXPECT_EQ((PartInfo{1, 0, "wall", 3, {{6, 1}, {10, 1}}}), host.part(1));
  EXPECT_EQ((Floats{3, 4, 5}), x_of(host.coordinates(1)));
  EXPECT_EQ((Rows{{1, 1, 3}}), host.rows(1, 6));
  EXPECT_EQ((Rows{{1, 2, 1, 1}}), host.rows(1, 10));
}

TEST_F(BadIndices, NodesOfFacesThatAreTooFewAreFilledUpWithNode1) {
  testkit::Mesh mesh = numbered_mesh(6);
  testkit::Surface surface{.name = "wall"};
  surface.type = {133, 134, 133};
  surface.link = {-1, -1, -1};
  surface.node = {5, 3, 4, 3, 2};
  mesh.surfaces = {surface};
  EXPECT_EQ(warning(5, "NODE NUMBERS OF FACES MISSING"), warnings_of(file_of(mesh)));
  EXPECT_EQ((PartInfo{1, 0, "wall", 4, {{6, 2}, {10, 1}}}), host.part(1));
  EXPECT_EQ((Rows{{4, 2, 3}, {1, 1, 1}}), host.rows(1, 6));
  EXPECT_EQ((Rows{{2, 1, 1, 1}}), host.rows(1, 10));
}

TEST_F(BadIndices, ElementsOfVolumesThatThereAreNotAreLeftOut) {
  testkit::Mesh mesh = numbered_mesh(6);
  add_volume(mesh, "one of five", {1, 0, -1, kMax, kMin});
  EXPECT_EQ(warning(4, "ELEMENT NUMBERS OF VOLUMES OUT OF RANGE"), warnings_of(file_of(mesh)));
  EXPECT_EQ((PartInfo{1, 0, "one of five", 4, {{14, 1}}}), host.part(1));
  EXPECT_EQ((Rows{{1, 2, 3, 4}}), host.rows(1, 14));
  EXPECT_EQ((Floats{1}), host.materials(1, 14));
}

TEST_F(BadIndices, LinksOfFacesThatNameNoElementHaveNoMaterial) {
  testkit::Mesh mesh = numbered_mesh(6);
  testkit::Surface surface{.name = "wall"};
  for (const int link : {0, 1, -1, -2, kMax, kMin}) surface.add(testkit::kTriangleFace, {0, 1, 2}, link);
  mesh.surfaces = {surface};
  // A link of -1 is valid: the face belongs to no element.
  EXPECT_EQ(warning(4, "ELEMENT NUMBERS OF FACES OUT OF RANGE"), warnings_of(file_of(mesh)));
  EXPECT_EQ((Floats{1, 0, 0, 0, 0, 0}), host.materials(1, 6));
}

TEST_F(BadIndices, OneLineOfWarningPerKind) {
  testkit::Mesh mesh = numbered_mesh(4);
  for (const char* name : {"a", "b"}) {
    add_triangle_surface(mesh, name, {1, 2, 50});
    add_volume(mesh, name, {9});
  }
  for (auto& surface : mesh.surfaces) surface.link = {7};
  mesh.elements.conn.values()[0] = 99;
  EXPECT_EQ(warning(1, "NODE NUMBERS OF ELEMENTS OUT OF RANGE") +
                warning(2, "NODE NUMBERS OF FACES OUT OF RANGE") +
                warning(2, "ELEMENT NUMBERS OF FACES OUT OF RANGE") +
                warning(2, "ELEMENT NUMBERS OF VOLUMES OUT OF RANGE"),
            warnings_of(file_of(mesh)));
}

TEST_F(BadIndices, OneLineOfWarningForAllRegionSetsOfAFile) {
  testkit::Mesh mesh = numbered_mesh(4);
  mesh.elements.conn.values()[0] = 99;
  testkit::File file = file_at(0, {mesh, numbered_mesh(4), mesh});
  const auto path = write(file);
  EXPECT_EQ(trace(path) + trace(path) + trace(path) + trace(path) +
                warning(2, "NODE NUMBERS OF ELEMENTS OUT OF RANGE") + "read done\n",
            stderr_of([&] { EXPECT_EQ(1, host.open(path)); }));
}

TEST_F(BadIndices, MeshWithoutNodesHasRowsOfNode1) {
  testkit::Mesh mesh = numbered_mesh(4);
  mesh.nodes = {};
  add_triangle_surface(mesh, "wall", {0, 1, 2});
  add_volume(mesh, "fluid", {0});
  write_and_open(file_of(mesh));
  EXPECT_EQ((PartInfo{1, 0, "wall", 0, {{6, 1}}}), host.part(1));
  EXPECT_EQ((Rows{{1, 1, 1}}), host.rows(1, 6));
  EXPECT_EQ((Rows{{1, 1, 1, 1}}), host.rows(2, 14));
  EXPECT_EQ((Rows{{1, 1, 1, 1}}), host.rows(3, 14));
}

TEST_F(BadIndices, VolumesWithoutElementsAtAllAreEmpty) {
  testkit::Mesh small = numbered_nodes(3);
  add_volume(small, "lost", {0, 1});
  testkit::File file = file_at(0, {numbered_mesh(4), small});
  file.region_sets[1].remove("LS_Elements");
  write_and_open(file);
  EXPECT_EQ((PartInfo{1, 0, "lost", 0, {}}), host.part(1));
  EXPECT_EQ(Rows{}, host.rows(1, 14));
  EXPECT_EQ(Floats{}, host.materials(1, 14));
}

TEST_F(BadIndices, WarningsComeAgainWhenAStepIsRead) {
  testkit::Mesh mesh = numbered_mesh(4);
  write(file_at(1, {mesh}), "case_1.fld");
  mesh.elements.conn.values()[0] = 99;
  write(file_at(2, {mesh}), "case_2.fld");
  open(in("case_1.fld"));
  EXPECT_EQ(trace(in("case_2.fld")) + "WARNING : 1 NODE NUMBERS OF ELEMENTS OUT OF RANGE IN " +
                in("case_2.fld").string() + "\n",
            select(1, 1));
}

TEST_F(BadIndices, OneLineOfWarningForAllRegionSetsOfAStep) {
  testkit::Mesh mesh = numbered_mesh(4);
  write(file_at(1, {mesh, mesh}), "case_1.fld");
  mesh.elements.conn.values()[0] = 99;
  write(file_at(2, {mesh, mesh}), "case_2.fld");
  open(in("case_1.fld"));
  EXPECT_EQ(trace(in("case_2.fld")) + trace(in("case_2.fld")) +
                "WARNING : 2 NODE NUMBERS OF ELEMENTS OUT OF RANGE IN " + in("case_2.fld").string() + "\n",
            select(1, 1));
}

}  // namespace
}  // namespace reader_test
