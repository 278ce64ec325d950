// Steps with another mesh: more nodes, other elements, other regions.
#include <string>

#include "tests/reader/loaded_reader.h"
#include "tests/reader/small_datasets.h"

namespace reader_test {
namespace {

class ChangingMesh : public LoadedReader {
 protected:
  void write_steps(const std::vector<std::vector<testkit::Mesh>>& steps) {
    int cycle = 0;
    for (const auto& meshes : steps) {
      ++cycle;
      testkit::File file = file_at(cycle, meshes);
      for (std::size_t g = 0; g < meshes.size(); ++g) {
        file.region_sets[g].add(
            numbered_scalar("T", static_cast<int>(meshes[g].nodes.size()), 1000.0 * cycle));
      }
      write(file, "case_" + std::to_string(cycle) + ".fld");
    }
    open(in("case_1.fld"));
  }
  void go_to(int step) {
    select(1, step);
    select(2, step);
  }
};

// `count` elements of one code without shared nodes, all in the volume "fluid".
testkit::Mesh elements_of(std::int32_t code, int count) {
  const int corners = testkit::corner_count(code);
  testkit::Mesh mesh = numbered_nodes(count * corners);
  std::vector<std::int32_t> all;
  for (int e = 0; e < count; ++e) {
    add_element(mesh, code, e * corners);
    all.push_back(e);
  }
  add_volume(mesh, "fluid", all);
  return mesh;
}

TEST_F(ChangingMesh, LaterStepMayHaveMoreNodesAndElements) {
  write_steps({{elements_of(testkit::kTetrahedron, 1)}, {elements_of(testkit::kTetrahedron, 500)}});
  go_to(1);
  EXPECT_EQ((PartInfo{1, 0, "fluid", 2000, {{14, 500}}}), host.part(1));
  EXPECT_EQ((PartInfo{2, 0, "ALL_ELEMENTS", 2000, {{14, 500}}}), host.part(2));
  for (const int part : {1, 2}) {
    const Rows rows = host.rows(part, 14);
    const Floats x = x_of(host.coordinates(part));
    const Floats values = host.scalar(1, part);
    for (int e = 0; e < 500; ++e) {
      EXPECT_EQ((std::vector<int>{4 * e + 1, 4 * e + 2, 4 * e + 3, 4 * e + 4}),
                rows[static_cast<std::size_t>(e)]);
    }
    for (std::size_t i = 0; i < 2000; ++i) {
      EXPECT_EQ(static_cast<float>(i), x[i]);
      EXPECT_EQ(2000.0F + static_cast<float>(i), values[i]);
    }
  }
}

TEST_F(ChangingMesh, LaterStepMayHaveOtherElementTypes) {
  testkit::Mesh mixed = numbered_nodes(8);
  for (const auto code : {testkit::kPyramid, testkit::kTetrahedron, testkit::kHexahedron, testkit::kPrism}) {
    add_element(mixed, code, 0);
  }
  add_volume(mixed, "fluid", {3, 2, 1, 0});
  write_steps({{elements_of(testkit::kHexahedron, 4)}, {mixed}});
  for (int round = 0; round < 2; ++round) {
    go_to(1);
    for (const int part : {1, 2}) {
      EXPECT_EQ((Rows{{1, 2, 3, 4}}), host.rows(part, 14));
      EXPECT_EQ((Rows{{1, 2, 3, 4, 5}}), host.rows(part, 18));
      EXPECT_EQ((Rows{{1, 2, 3, 4, 5, 6}}), host.rows(part, 22));
      EXPECT_EQ((Rows{{1, 2, 3, 4, 5, 6, 7, 8}}), host.rows(part, 26));
    }
    go_to(0);
    for (const int part : {1, 2}) {
      const Rows rows = host.rows(part, 26);
      ASSERT_EQ(4U, rows.size());
      EXPECT_EQ((std::vector<int>{25, 26, 27, 28, 29, 30, 31, 32}), rows[3]);
    }
  }
}

TEST_F(ChangingMesh, LaterStepMayBeSmaller) {
  write_steps({{elements_of(testkit::kHexahedron, 50)}, {elements_of(testkit::kPrism, 1)}});
  go_to(1);
  for (const int part : {1, 2}) {
    EXPECT_EQ((Rows{{1, 2, 3, 4, 5, 6}}), host.rows(part, 22));
    EXPECT_EQ((Floats{2000, 2001, 2002, 2003, 2004, 2005}), host.scalar(1, part));
  }
  go_to(0);
  EXPECT_EQ(50U, host.rows(1, 26).size());
}

TEST_F(ChangingMesh, RegionSetThatWasTheSmallerOneMayBecomeTheLarger) {
  write_steps({{elements_of(testkit::kHexahedron, 10), elements_of(testkit::kTetrahedron, 2)},
               {elements_of(testkit::kHexahedron, 10), elements_of(testkit::kPrism, 300)}});
  go_to(1);
  EXPECT_EQ((std::vector<int>{73, 74, 75, 76, 77, 78, 79, 80}), host.rows(1, 26)[9]);
  EXPECT_EQ((std::vector<int>{1795, 1796, 1797, 1798, 1799, 1800}), host.rows(2, 22)[299]);
  EXPECT_EQ((std::vector<int>{1795, 1796, 1797, 1798, 1799, 1800}), host.rows(4, 22)[299]);
  go_to(0);
  EXPECT_EQ((std::vector<int>{73, 74, 75, 76, 77, 78, 79, 80}), host.rows(1, 26)[9]);
  EXPECT_EQ((std::vector<int>{5, 6, 7, 8}), host.rows(2, 14)[1]);
}

// The file of the second step has only nodes, and fewer than the kept elements refer to.
TEST_F(ChangingMesh, FewerNodesUnderTheSameElementsLeaveNoGaps) {
  write(file_at(1, {elements_of(testkit::kTetrahedron, 2)}), "case_1.fld");
  testkit::File second = file_at(2);
  second.add_region_set().add(testkit::nodes_section(numbered_nodes(5).nodes));
  write(second, "case_2.fld");
  open(in("case_1.fld"));
  EXPECT_EQ(trace(in("case_2.fld")) + "WARNING : 3 NODE NUMBERS OF ELEMENTS OUT OF RANGE IN " +
                in("case_2.fld").string() + "\n",
            select(1, 1));
  EXPECT_EQ(5, host.part(1).nodes);
  EXPECT_EQ((Rows{{1, 2, 3, 4}, {5, 1, 1, 1}}), host.rows(1, 14));
  EXPECT_EQ((Rows{{1, 2, 3, 4}, {5, 1, 1, 1}}), host.rows(2, 14));
}

TEST_F(ChangingMesh, ElementsThatVanishLeaveAPartWithoutRows) {
  write(file_at(1, {elements_of(testkit::kTetrahedron, 2)}), "case_1.fld");
  testkit::File second = file_at(2);
  second.add_region_set().add(testkit::nodes_section(numbered_nodes(20).nodes));
  second.region_sets[0].add(testkit::elements_section({}));
  write(second, "case_2.fld");
  open(in("case_1.fld"));
  select(1, 1);
  EXPECT_EQ((PartInfo{1, 0, "fluid", 0, {}}), host.part(1));
  EXPECT_EQ((PartInfo{2, 0, "ALL_ELEMENTS", 20, {}}), host.part(2));
  EXPECT_EQ(Rows{}, host.rows(2, 14, 0));
  EXPECT_EQ(19.0F, host.coordinates(2)[19][0]);
}

TEST_F(ChangingMesh, RequestsInAnyOrderAfterTheChangeAreRight) {
  write_steps({{elements_of(testkit::kTetrahedron, 3)}, {elements_of(testkit::kPyramid, 40)}});
  EXPECT_EQ(12U, host.coordinates(1).size());
  go_to(1);
  EXPECT_EQ((std::vector<int>{196, 197, 198, 199, 200}), host.rows(1, 18)[39]);
  go_to(0);
  EXPECT_EQ((std::vector<int>{9, 10, 11, 12}), host.rows(1, 14)[2]);
  EXPECT_EQ(1011.0F, host.scalar(1, 1)[11]);
}

}  // namespace
}  // namespace reader_test
