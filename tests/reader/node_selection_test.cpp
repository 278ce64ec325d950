// The nodes of the selected part, and how long they are cached.
#include "reader/node_selection.h"

#include <numeric>
#include <utility>
#include <vector>

#include "reader/globals.h"
#include "reader/work_tables.h"
#include "tests/reader/linked_reader.h"
#include "tests/reader/small_datasets.h"

namespace reader_test {
namespace {

using Nodes = std::vector<int>;

class NodeSelection : public LinkedReader {
 protected:
  static Nodes select_part(int part) {
    const auto nodes = fld::select_nodes(fld::find_part(part)).nodes;
    return {nodes.begin(), nodes.end()};
  }
  static Nodes marked_nodes() {
    Nodes nodes;
    for (std::size_t i = 0; i < fld::g_mark_node.size(); ++i) {
      if (fld::g_mark_node[i] != 0) nodes.push_back(static_cast<int>(i));
    }
    return nodes;
  }
  // Nodes 0 .. count - 1 except one.
  static Nodes all_but(int left_out, int count) {
    Nodes nodes(static_cast<std::size_t>(count));
    std::iota(nodes.begin(), nodes.end(), 0);
    nodes.erase(nodes.begin() + left_out);
    return nodes;
  }
  // A surface with these nodes (at least three).
  static void add_surface(testkit::Mesh& mesh, const std::string& name, const Nodes& nodes) {
    testkit::Surface surface{.name = name};
    for (std::size_t i = 2; i < nodes.size(); ++i) {
      surface.add(testkit::kTriangleFace, {nodes[i], nodes[i - 1], nodes[i - 2]});
    }
    mesh.surfaces.push_back(surface);
  }
};

TEST_F(NodeSelection, IsTheSameEachTimeAPartIsSelected) {
  testkit::Mesh mesh = numbered_mesh(40);
  add_surface(mesh, "few", {31, 7, 12});
  add_surface(mesh, "many", {39, 5, 8, 30, 21, 22, 0});
  add_volume(mesh, "fluid", {0});
  write_and_open(testkit::file_of(mesh));
  const std::vector<Nodes> expected = {{7, 12, 31}, {0, 5, 8, 21, 22, 30, 39}, {0, 1, 2, 3}};
  for (const int part : {1, 2, 3, 2, 1, 3, 3, 1, 2}) {
    const Nodes& nodes = expected[static_cast<std::size_t>(part) - 1];
    EXPECT_EQ(nodes, select_part(part)) << part;
    EXPECT_EQ(nodes, marked_nodes()) << part;
    EXPECT_FALSE(fld::select_nodes(fld::find_part(part)).is_whole_mesh);
    const int* const numbers = fld::local_numbers();
    for (std::size_t k = 0; k < nodes.size(); ++k) EXPECT_EQ(static_cast<int>(k), numbers[nodes[k]]) << part;
  }
}

TEST_F(NodeSelection, OfAllNodesHasNoList) {
  testkit::Mesh mesh = numbered_mesh(4);
  add_volume(mesh, "fluid", {0});
  add_surface(mesh, "wall", {1, 2, 3});
  write_and_open(testkit::file_of(mesh));
  for (const int part : {2, 3, 1, 2, 3}) {
    const fld::PartNodes selected = fld::select_nodes(fld::find_part(part));
    EXPECT_EQ(part == 1 ? 3 : 4, selected.count);
    EXPECT_EQ(part != 1, selected.is_whole_mesh);
    EXPECT_EQ(part == 1 ? 3U : 0U, selected.nodes.size());
    EXPECT_EQ(part == 1 ? (Nodes{1, 2, 3}) : (Nodes{0, 1, 2, 3}), marked_nodes());
  }
}

// The connectivity of the whole mesh gives the nodes of a volume only if the volume has each element once ...
TEST_F(NodeSelection, OfAVolumeAsLongAsTheMeshIsOfItsElements) {
  testkit::Mesh mesh = numbered_nodes(9);
  for (const int first : {0, 4}) add_element(mesh, testkit::kTetrahedron, first);
  add_volume(mesh, "once", {0, 1});
  add_volume(mesh, "turned", {1, 0});
  add_volume(mesh, "twice", {1, 1});
  write_and_open(testkit::file_of(mesh));
  EXPECT_EQ((Nodes{0, 1, 2, 3, 4, 5, 6, 7}), select_part(1));
  EXPECT_EQ((Nodes{0, 1, 2, 3, 4, 5, 6, 7}), select_part(2));
  EXPECT_EQ((Nodes{4, 5, 6, 7}), select_part(3));
}

// ... and the connectivity has no other entries.
TEST_F(NodeSelection, LeavesOutNodesThatNoElementNames) {
  testkit::Mesh mesh = numbered_nodes(8);
  add_element(mesh, testkit::kTetrahedron, 0);
  add_volume(mesh, "fluid", {0});
  testkit::File file = testkit::file_of(mesh);
  auto& blocks = file.region_sets[0].section("LS_Elements").blocks;
  blocks[2] = testkit::Block::long_integer(8);
  blocks[3] = testkit::Block::integers({0, 1, 2, 3, 4, 5, 6, 7});
  write_and_open(file);
  EXPECT_EQ((Nodes{0, 1, 2, 3}), select_part(1));
}

// Triangles and quadrilaterals are not counted in the offsets, so the next element has the same offset.
TEST_F(NodeSelection, FollowsTheOffsetsWhereThereAreFlatElements) {
  for (const auto& [code, expected] :
       {std::pair{testkit::kTriangle, Nodes{0, 4, 5, 6}}, {testkit::kQuadrilateral, Nodes{4, 5, 6, 7}}}) {
    testkit::Mesh mesh = numbered_nodes(9);
    add_element(mesh, code, 4);
    add_element(mesh, testkit::kTetrahedron, 0);
    add_volume(mesh, "all", {0, 1});
    write_and_open(testkit::file_of(mesh));
    EXPECT_EQ(expected, select_part(1)) << code;
  }
}

TEST_F(NodeSelection, IsRightBeyondTheRoomForLists) {
  constexpr int kCount = 20;
  constexpr int kParts = 6;  // there is room for the lists of two
  testkit::Mesh mesh = numbered_mesh(kCount);
  for (int i = 0; i < kParts; ++i) add_surface(mesh, "part", all_but(i, kCount));
  write_and_open(testkit::file_of(mesh));
  for (int round = 0; round < 3; ++round) {
    for (int i = 0; i < kParts; ++i) {
      EXPECT_EQ(all_but(i, kCount), select_part(i + 1));
      EXPECT_EQ(all_but(i, kCount), marked_nodes());
    }
  }
}

TEST_F(NodeSelection, IsFoundAnewWithAnotherGeometry) {
  testkit::Mesh first = numbered_mesh(8);
  add_surface(first, "wall", {1, 2, 3});
  testkit::Mesh second = numbered_mesh(8);
  add_surface(second, "wall", {5, 6, 7});
  write(file_at(0, {first}), "case_0.fld");
  write(file_at(1, {second}), "case_1.fld");
  open(in("case_0.fld"));
  EXPECT_EQ((Nodes{1, 2, 3}), select_part(1));
  select(1, 1);
  EXPECT_EQ((Nodes{5, 6, 7}), select_part(1));
  select(1, 0);
  EXPECT_EQ((Nodes{1, 2, 3}), select_part(1));
}

TEST_F(NodeSelection, StaysWhileTheGeometryDoes) {
  testkit::Mesh mesh = numbered_mesh(40);
  add_surface(mesh, "wall", {1, 2, 3});
  add_surface(mesh, "roof", {5, 6, 7});
  testkit::File later = file_at(1);
  later.add_region_set().add(numbered_scalar("P", 40));
  write(file_at(0, {mesh}), "case_0.fld");
  write(later, "case_1.fld");
  open(in("case_0.fld"));
  const int* const list = fld::select_nodes(fld::find_part(1)).nodes.data();
  select_part(2);
  select(2, 1);
  select(1, 0);
  EXPECT_EQ((Nodes{1, 2, 3}), select_part(1));
  EXPECT_EQ(list, fld::select_nodes(fld::find_part(1)).nodes.data());
}

}  // namespace
}  // namespace reader_test
