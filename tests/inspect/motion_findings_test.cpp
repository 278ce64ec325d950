// The findings about motion: FLD-801 to FLD-805.
#include "gtest/gtest.h"
#include <limits>

#include "testkit/motion.h"
#include "tests/inspect/series_files.h"

namespace {

using inspect_test::line;
using inspect_test::Lines;
using inspect_test::lines;
using inspect_test::small_file_at;
using inspect_test::Written;
using testkit::Action;

// A series of two files: one with the mesh at cycle 10, and one at cycle 20 in which the mesh moves.
class MotionFindings : public testing::Test {
 protected:
  Written write(const testkit::Motion& motion) {
    files.add("case_10.fld", small_file_at(10, 1.0));
    testkit::File moved = small_file_at(20, 2.0);
    moved.region_sets.front().sections = {testkit::motion_section(motion)};
    return files.add("case_20.fld", moved);
  }

  // The findings in the second file.
  Lines told() const {
    const auto reports = files.check("case_20.fld");
    EXPECT_EQ(reports.size(), 2U);
    EXPECT_EQ(lines(reports.at(0)), Lines{});
    return lines(reports.at(1));
  }

  static testkit::Motion motion_of(const std::string& name, const Action& action) {
    return {.base_cycle = 10, .regions = {{.names = {name}, .actions = {action}}}};
  }

  inspect_test::SeriesFiles files;
};

TEST_F(MotionFindings, GoodMotion) {
  write(motion_of("fluid", Action::rotate({0, 0, 0}, {0, 0, 1}, 0.5)));
  EXPECT_EQ(told(), Lines{});
}

TEST_F(MotionFindings, ANameThatBeginsWithTheRegionsMeansIt) {
  write(motion_of("fluid_2", Action::translate({1, 0, 0})));
  EXPECT_EQ(told(), Lines{});
}

TEST_F(MotionFindings, ASecondRegionOfTheMesh) {
  write(motion_of("other", Action::translate({1, 0, 0})));
  testkit::File base = small_file_at(10, 1.0);
  base.region_sets.front().section("LS_VolumeGeometry") = testkit::volumes_section(
      {{.name = "fluid", .elements = {0, 0, 0, 0, 0, 0, 0, 0}}, {.name = "other", .elements = {0}}});
  files.add("case_10.fld", base);
  EXPECT_EQ(told(), Lines{});
}

TEST_F(MotionFindings, NoSuchRegion) {
  const Written file = write(motion_of("flui", Action::translate({1, 0, 0})));
  EXPECT_EQ(told(), Lines{line(801, file.value("LS_ALE", 4), "a volume region", "\"flui\"")});
}

// Of more than 4 MiB of names, 32 bytes more each, nothing is said.
TEST_F(MotionFindings, NoSuchRegionAmongAsManyAsAreCompared) {
  const auto zeros = [](std::int64_t count) { return testkit::Block::integers(testkit::Ints::hole(count)); };
  for (const std::int32_t regions : {127'100, 127'101}) {
    const Written file = write(motion_of("x", Action::translate({1, 0, 0})));
    testkit::File base = small_file_at(10, 1.0);
    base.region_sets.front().section("LS_VolumeGeometry") = {
        .title = "LS_VolumeGeometryArray",
        .blocks = {testkit::Block::integer(regions), testkit::Block::integer(1),
                   testkit::Block::characters(std::string(static_cast<std::size_t>(regions), 'a')),
                   zeros(regions), zeros(0)}};
    files.add("case_10.fld", base);
    const auto reports = files.check("case_20.fld");
    ASSERT_EQ(reports.size(), 2U);
    const Lines nothing_moves{line(801, file.value("LS_ALE", 4), "a volume region", "\"x\"")};
    EXPECT_EQ(lines(reports[1]), regions == 127'100 ? nothing_moves : Lines{});
  }
}

TEST_F(MotionFindings, NoSuchCycle) {
  testkit::Motion motion = motion_of("fluid", Action::translate({1, 0, 0}));
  motion.base_cycle = 11;
  const Written file = write(motion);
  EXPECT_EQ(told(), Lines{line(802, file.value("LS_ALE", 1), "a cycle of the series", "11")});
}

TEST_F(MotionFindings, NoSuchCycleInADatasetOfOneFile) {
  testkit::File file = small_file_at(5, 0.0);
  file.region_sets.front().add(testkit::motion_section({.base_cycle = 6}));
  const Written written(file);
  EXPECT_EQ(inspect_test::told(written.bytes),
            Lines{line(802, written.value("LS_ALE", 1), "a cycle of the series", "6")});
}

TEST_F(MotionFindings, NothingIsSaidAboutTheSeriesOfAFileAlone) {
  testkit::Motion motion = motion_of("fluid", Action::translate({1, 0, 0}));
  motion.base_cycle = 11;
  write(motion);
  const auto reports = files.check("case_20.fld", true);
  ASSERT_EQ(reports.size(), 1U);
  EXPECT_EQ(lines(reports[0]), Lines{});
}

TEST_F(MotionFindings, ABaseWithoutNodes) {
  testkit::Motion motion = motion_of("fluid", Action::translate({1, 0, 0}));
  motion.base_cycle = 20;
  const Written file = write(motion);
  EXPECT_EQ(told(), Lines{line(803, file.value("LS_ALE", 1), "a file with nodes", "20")});
}

TEST_F(MotionFindings, ValuesThatAreNoNumbers) {
  const Written file =
      write(motion_of("fluid", Action::translate({1, std::numeric_limits<double>::infinity(), 0})));
  EXPECT_EQ(told(), Lines{line(804, file.value("LS_ALE", 8) + 8, "finite numbers", "inf")});
}

TEST_F(MotionFindings, ARotationAboutNothing) {
  const Written file = write(motion_of("fluid", Action::rotate({1, 2, 3}, {0, 0, 0}, 0.5)));
  EXPECT_EQ(told(), Lines{line(805, file.value("LS_ALE", 9), "an axis", "(0, 0, 0)")});
}

}  // namespace
