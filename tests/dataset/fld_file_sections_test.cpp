// FLDFile::checkSections: the content of each region set of a file.
#include "tests/dataset/dataset_test.h"

namespace fld {
namespace {

using testkit::Section;

class CheckSections : public testing::Test {
 protected:
  FLDFile checked(const testkit::File& file) { return test::checked(test::write(directory_, "a.fld", file)); }

  testkit::TemporaryDirectory directory_;
};

testkit::Section some_motion(int base_cycle) {
  return testkit::motion_section(
      {.base_cycle = base_cycle,
       .regions = {{.names = {"fluid"}, .actions = {testkit::Action::translate({1.0, 2.0, 3.0})}}}});
}

testkit::Section some_scalar(const char* name) {
  return testkit::scalar_section({.name = name, .label = "label", .values = {1.0, 2.0, 3.0, 4.0}});
}

TEST_F(CheckSections, TellsWhichRegionSetHasWhat) {
  testkit::File file = test::plain_file();
  file.region_sets[0].add(some_scalar("P"));
  file.add_region_set().add(some_motion(100));
  file.add_region_set().add(some_scalar("@BNODE"));
  file.add_region_set();
  const FLDFile read = checked(file);
  ASSERT_EQ(read.m_overlap.size(), 4U);
  const bool expected[4][3] = {
      {true, false, false}, {false, true, false}, {false, false, true}, {false, false, false}};
  for (size_t region = 0; region < 4; ++region) {
    EXPECT_EQ(read.m_overlap[region].m_hasGeometry, expected[region][0]) << region;
    EXPECT_EQ(read.m_overlap[region].m_hasALE, expected[region][1]) << region;
    EXPECT_EQ(read.m_overlap[region].m_hasOverset, expected[region][2]) << region;
    EXPECT_TRUE(read.m_overlap[region].m_scalars.empty()) << region;
    EXPECT_TRUE(read.m_overlap[region].m_vectors.empty()) << region;
  }
  EXPECT_TRUE(read.hasGeometry());
  EXPECT_TRUE(read.hasALE());
  EXPECT_TRUE(read.hasOverset());
}

TEST_F(CheckSections, PlainFileHasGeometryOnly) {
  const FLDFile read = checked(test::plain_file());
  EXPECT_EQ(read.m_overlap.size(), 1U);
  EXPECT_TRUE(read.hasGeometry());
  EXPECT_FALSE(read.hasALE());
  EXPECT_FALSE(read.hasOverset());
}

TEST_F(CheckSections, FileWithoutRegionSetsHasNothing) {
  const FLDFile read = checked(testkit::File());
  EXPECT_TRUE(read.m_overlap.empty());
  EXPECT_FALSE(read.hasGeometry());
  EXPECT_FALSE(read.hasALE());
  EXPECT_FALSE(read.hasOverset());
}

TEST_F(CheckSections, ReadsTheMotionOfItsRegionSet) {
  testkit::File file = test::plain_file();
  file.add_region_set().add(some_motion(100));
  const FLDFile read = checked(file);
  EXPECT_TRUE(read.m_overlap.at(0).m_ale.regions.empty());
  const ALE& ale = read.m_overlap.at(1).m_ale;
  EXPECT_EQ(ale.base_cycle, 100);
  ASSERT_EQ(ale.regions.size(), 1U);
  EXPECT_EQ(ale.regions[0].names, std::vector<std::string>{"fluid"});
  ASSERT_EQ(ale.regions[0].actions.size(), 1U);
  EXPECT_EQ(ale.regions[0].actions[0].motion(), Motion::translate);
  EXPECT_EQ(ale.regions[0].actions[0].data[2], 3.0);
}

TEST_F(CheckSections, OnlyScalarsThatBeginWithBnodeAreOverset) {
  for (const auto& [name, overset] : {std::pair("@BNODE", true), std::pair("@BNODE_2", true),
                                      std::pair("BNODE", false), std::pair("@bnode", false)}) {
    testkit::File file = test::plain_file();
    file.region_sets[0].add(some_scalar(name));
    EXPECT_EQ(checked(file).hasOverset(), overset) << name;
  }
  testkit::File file = test::plain_file();
  file.region_sets[0].add(
      testkit::vector_section({.name = "@BNODE", .label = "", .x = {1.0}, .y = {1.0}, .z = {1.0}}));
  EXPECT_FALSE(checked(file).hasOverset());
}

TEST_F(CheckSections, BeginningOfATitleDecides) {
  testkit::File file;
  file.add_region_set();
  file.region_sets[0].opener = "OverlapStart_";
  Section nodes{.title = "LS_Nodes of the inner mesh", .blocks = {}};
  file.region_sets[0].add(nodes);
  Section motion = some_motion(5);
  motion.title = "LS_ALE2";
  file.region_sets[0].add(motion);
  file.closer = "OverlapEnd_of_all";
  const FLDFile read = checked(file);
  ASSERT_EQ(read.m_overlap.size(), 1U);
  EXPECT_TRUE(read.m_overlap[0].m_hasGeometry);
  EXPECT_TRUE(read.m_overlap[0].m_hasALE);
  EXPECT_EQ(read.m_overlap[0].m_ale.base_cycle, 5);
}

TEST_F(CheckSections, OtherTitlesAreSteppedOver) {
  testkit::File file = test::plain_file();
  file.region_sets[0].remove("LS_Nodes");
  for (const char* title : {"LS_Node", "ls_nodes", "XLS_Nodes", "OverlapStart", "Overlapend", "LS_Unknown"}) {
    file.region_sets[0].add(Section{.title = title, .blocks = {testkit::Block::integers({1, 2, 3}).cut(2)}});
  }
  const FLDFile read = checked(file);
  EXPECT_EQ(read.m_overlap.size(), 1U);
  EXPECT_FALSE(read.hasGeometry());
}

TEST_F(CheckSections, SectionsBeforeTheFirstRegionSetBelongToNone) {
  testkit::File file;
  testkit::RegionSet& without_opener = file.add_region_set();
  without_opener.opener.reset();
  without_opener.add(testkit::nodes_section(testkit::one_tetrahedron().nodes));
  without_opener.add(some_motion(3));
  without_opener.add(some_scalar("@BNODE"));
  file.add_region_set();
  const FLDFile read = checked(file);
  EXPECT_EQ(read.m_overlap.size(), 1U);
  EXPECT_FALSE(read.hasGeometry());
  EXPECT_FALSE(read.hasALE());
  EXPECT_FALSE(read.hasOverset());
}

TEST_F(CheckSections, KnowsWhereEachRegionSetBegins) {
  testkit::File file;
  file.header.items.clear();
  file.add_region_set().add(testkit::nodes_section(testkit::one_tetrahedron().nodes));
  file.add_region_set();
  const FLDFile read = checked(file);
  ASSERT_EQ(read.m_overlap.size(), 2U);
  // Identification 16, version 12, title 40; then a title of 40 and nodes of 256 bytes.
  EXPECT_EQ(read.m_overlap[0].m_begin, 68);
  EXPECT_EQ(read.m_overlap[1].m_begin, 364);
}

TEST_F(CheckSections, NothingBehindTheEndIsRead) {
  testkit::File file = test::plain_file();
  file.trailing_bytes = "anything";
  EXPECT_EQ(checked(file).m_overlap.size(), 1U);
}

TEST_F(CheckSections, SaysNothing) {
  const std::string path = test::write(directory_, "a.fld", test::plain_file());
  test::Messages messages;
  EXPECT_EQ(FLDFile(path).checkSections(), 0);
  EXPECT_EQ(messages.text(), "");
}

TEST_F(CheckSections, CopyIsIndependent) {
  const FLDFile original = checked(test::plain_file());
  FLDFile copy = original;
  copy.m_overlap[0].m_scalars.own().emplace_back();
  copy.m_path += "x";
  EXPECT_TRUE(original.m_overlap[0].m_scalars.empty());
  EXPECT_NE(original.m_path, copy.m_path);
}

}  // namespace
}  // namespace fld
