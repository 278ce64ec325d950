// The findings about blocks: FLD-301 to FLD-310.
#include "gtest/gtest.h"
#include <algorithm>
#include <cstdint>

#include "testkit/motion.h"
#include "tests/inspect/checked.h"

namespace {

using inspect_test::line;
using inspect_test::Lines;
using inspect_test::small_file;
using inspect_test::told;
using inspect_test::with_integer;
using inspect_test::Written;
using testkit::Block;
using testkit::File;
using testkit::Section;

Section& section(File& file, const char* title) {
  return file.region_sets.front().section(title);
}

// Expects this finding if the rule record of the x coordinates of four nodes is `rule`.
void expect_rule(const testkit::Rule& rule, int number, const std::string& wanted, const std::string& found) {
  File file = small_file();
  Block& x = section(file, "LS_Nodes").blocks[1];
  x = x.with_rule(rule);
  const Written written(file);
  EXPECT_EQ(told(written.bytes), Lines{line(number, written.rule("LS_Nodes", 1), wanted, found)});
}

TEST(BlockFindings, ImpossibleFields) {
  const std::string wanted = "no field below 0, elements in the records";
  expect_rule({4, -4, 1}, 301, wanted, "width 4, -4 per record, 1 records");
  expect_rule({-4, 4, 1}, 301, wanted, "width -4, 4 per record, 1 records");
  expect_rule({4, 4, -1}, 301, wanted, "width 4, 4 per record, -1 records");
  expect_rule({4, 0, 1}, 301, wanted, "width 4, 0 per record, 1 records");
}

TEST(BlockFindings, TheWrongWidth) {
  expect_rule({5, 4, 1}, 302, "4 or 8", "5");
}

TEST(BlockFindings, TheWrongWidthOfIntegersAndTexts) {
  File file = small_file();
  section(file, "LS_MatOfElements").blocks[1].rule = testkit::Rule{8, 1, 1};
  section(file, "LS_Scalar:p").blocks[0].rule = testkit::Rule{2, 32, 1};
  const Written written(file);
  EXPECT_EQ(told(written.bytes), (Lines{line(302, written.rule("LS_MatOfElements", 1), "4", "8"),
                                        line(302, written.rule("LS_Scalar:p", 0), "1", "2")}));
}

TEST(BlockFindings, TheWrongSize) {
  expect_rule({4, 4, 2}, 303, "4 elements of width 4", "width 4, 4 per record, 2 records");
  expect_rule({4, 3, 1}, 303, "4 elements of width 4", "width 4, 3 per record, 1 records");
  expect_rule({4, 4, 0}, 303, "4 elements of width 4", "width 4, 4 per record, 0 records");
}

// After the last element, and in a block without elements.
TEST(BlockFindings, ARecordWithoutElementsIsRight) {
  File file = small_file();
  testkit::RegionSet& set = file.region_sets.front();
  Block& x = set.section("LS_Nodes").blocks[1];
  x = x.with_rule({4, 4, 2});
  const Written written(file);
  std::string bytes = written.bytes;
  bytes.insert(written.value("LS_Nodes", 1) + 20, 8, '\0');
  EXPECT_EQ(told(bytes), Lines{});

  set.section("LS_Nodes").blocks[1].rule.reset();
  set.section("LS_VolumeGeometry") = testkit::volumes_section({{.name = "none"}});
  const Written empty(file);
  const std::uint64_t rule = empty.rule("LS_VolumeGeometry", 4);
  bytes = with_integer(with_integer(empty.bytes, rule + 8, 3), rule + 12, 1);
  bytes.insert(rule + 20, 8, '\0');
  EXPECT_EQ(told(bytes), told(empty.bytes));
}

// The connectivity of one tetrahedron.
TEST(BlockFindings, ACountThatNoFileCanHold) {
  const std::string found = "width 4, 4 per record, 1 records";
  for (const std::int64_t count : {INT64_MAX, INT64_MAX - 3, INT64_MAX - 4}) {
    const Written file(small_file());
    std::string bytes = file.bytes;
    const std::uint64_t length = file.value("LS_Elements", 2);
    bytes = with_integer(bytes, length, static_cast<std::int32_t>(count >> 32));
    bytes = with_integer(bytes, length + 4, static_cast<std::int32_t>(count & 0xffffffff));
    const Lines lines = told(bytes);
    EXPECT_NE(std::find(lines.begin(), lines.end(),
                        line(303, file.rule("LS_Elements", 3), std::to_string(count) + " elements of width 4",
                             found)),
              lines.end())
        << testing::PrintToString(lines);
  }
}

TEST(BlockFindings, ACountThatTheBlockDoesNotHave) {
  const Written file(small_file());
  EXPECT_EQ(told(with_integer(file.bytes, file.value("LS_Nodes", 0), 5)),
            Lines{line(303, file.rule("LS_Nodes", 1), "5 elements of width 4",
                       "width 4, 4 per record, 1 records")});
}

TEST(BlockFindings, ARuleThatAnnouncesLongerRecords) {
  expect_rule({4, 9, 1}, 304, "at most 4 per record", "9");
}

TEST(BlockFindings, TooFewBlocks) {
  File file = small_file();
  section(file, "LS_Nodes").blocks.pop_back();
  const Written written(file);
  EXPECT_EQ(told(written.bytes),
            Lines{line(305, written.places.of("LS_Nodes").end - 20, "a block: z", "the end rule")});
}

TEST(BlockFindings, TooManyBlocks) {
  File file = small_file();
  section(file, "LS_Nodes").blocks.push_back(Block::integer(1));
  const Written written(file);
  EXPECT_EQ(told(written.bytes), Lines{line(306, written.rule("LS_Nodes", 4), "the end rule",
                                            "width 4, 1 per record, 1 records")});
}

TEST(BlockFindings, NoEndRule) {
  File file = small_file();
  section(file, "LS_Nodes").end_rule.reset();
  const Written written(file);
  EXPECT_EQ(told(written.bytes),
            Lines{line(307, written.title("LS_Scalar:p"), "a rule", "the title \"LS_Scalar:p\"")});
}

TEST(BlockFindings, ANegativeCount) {
  const Written file(small_file());
  EXPECT_EQ(told(with_integer(file.bytes, file.value("LS_Nodes", 0), -4)),
            Lines{line(308, file.value("LS_Nodes", 0), "0 or more", "-4")});
}

TEST(BlockFindings, ANegativeCountOfOneOfTheRegions) {
  File file = small_file();
  section(file, "LS_SurfaceGeometry") =
      testkit::surfaces_section({{.name = "a"}, {.name = "b"}}, testkit::RegionForm::kArray);
  const Written written(file);
  const std::uint64_t place = written.value("LS_SurfaceGeometryArray", 3) + 4;
  EXPECT_EQ(told(with_integer(written.bytes, place, -1)), Lines{line(308, place, "0 or more", "-1")});
}

// The small file with a motion of its one region.
File moving(const testkit::Action& action) {
  File file = small_file();
  file.region_sets.front().add(
      testkit::motion_section({.regions = {{.names = {"fluid"}, .actions = {action}}}, .name_length = 16}));
  return file;
}

TEST(BlockFindings, TheWrongNumberOfItems) {
  testkit::Action action = testkit::Action::translate({1, 0, 0});
  action.item_count = 2;
  const Written file(moving(action));
  EXPECT_EQ(told(file.bytes), Lines{line(309, file.rule("LS_ALE", 7), "1", "2")});
}

TEST(BlockFindings, AnUnknownAction) {
  const Written file(moving({.kind = "Twist", .items = {{1.0}}}));
  EXPECT_EQ(told(file.bytes), Lines{line(310, file.rule("LS_ALE", 6), "Rotate, Translate, Scale or 4Points",
                                         "\"Twist           \"")});
}

}  // namespace
