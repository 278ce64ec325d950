// What commands do that take long: they tell how far they are on a terminal, and stop on Ctrl-C.
#include "gtest/gtest.h"
#include <csignal>
#include <filesystem>
#include <string>
#include <vector>

#include "testkit/box_dataset.h"
#include "testkit/file_writer.h"
#include "tests/tool/run_fldtool.h"
#include "tests/tool/terminal.h"
#include "tests/tool/tool_datasets.h"

namespace {

using tool_test::kErase;
using tool_test::one_of_each_file;
using tool_test::OneFile;
using tool_test::Result;

TEST(LongWork, CheckTellsProgressOnATerminalAndErasesIt) {
  const OneFile file(one_of_each_file());
  const Result result = tool_test::run_fldtool_on_terminal({"check", "--full", file.path()});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.output, file.path() + ": no findings\n");
  EXPECT_EQ(result.errors.find(std::string(kErase) + "checking: "), 0U) << result.errors;
  EXPECT_TRUE(result.errors.ends_with(kErase)) << result.errors;
}

// A file whose titles alone take a while: a record for every value.
const testkit::BoxOptions kManyRecords = {.nx = 60, .ny = 60, .nz = 40, .split = 1};

TEST(LongWork, CheckTellsProgressAlsoOfTheStructure) {
  const OneFile file(one_of_each_file());
  const Result result = tool_test::run_fldtool_on_terminal({"check", file.path()});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.errors.find(std::string(kErase) + "checking: 0.0 of 3.9 kB, 0 %"), 0U) << result.errors;
  EXPECT_TRUE(result.errors.ends_with(kErase)) << result.errors;
}

TEST(LongWork, LayoutTellsProgressWhileItLooksForATitle) {
  const OneFile file(one_of_each_file());
  const Result result = tool_test::run_fldtool_on_terminal({"layout", file.path(), "--title", "LS_Nodes"});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.errors.find(std::string(kErase) + "reading: 0.0 of 3.9 kB, 0 %"), 0U) << result.errors;
  EXPECT_TRUE(result.errors.ends_with(kErase)) << result.errors;
}

TEST(LongWork, WalksOverTitlesStopWhenTheyAreInterrupted) {
  const OneFile file(testkit::box_file(kManyRecords), "box_1.fld");
  using Words = std::vector<std::string>;
  for (const Words& words : {Words{"check", file.path()}, Words{"check", "--full", file.path()},
                             Words{"layout", file.path(), "--title", "OverlapEnd"}}) {
    const Result result = tool_test::run_fldtool_on_terminal_and_interrupt(words, SIGINT);
    EXPECT_EQ(result.status, 130) << words.front();
    EXPECT_TRUE(result.errors.ends_with(kErase + std::string("fldtool: interrupted\r\n"))) << result.errors;
    EXPECT_EQ(result.output.find("  end\n"), std::string::npos);
    EXPECT_EQ(result.output.find("no findings"), std::string::npos);
  }
}

// What is drawn first.
void expect_drawn(const std::vector<std::string>& words, const std::string& line) {
  const std::string drawn = tool_test::run_fldtool_on_terminal(words).errors;
  EXPECT_EQ(drawn.find(kErase + line), 0U) << drawn;
  EXPECT_TRUE(drawn.ends_with(kErase)) << drawn;
}

TEST(LongWork, InfoTellsProgressOfWhatItReads) {
  const OneFile file(one_of_each_file());
  // Five boxes and three ranges; for all steps those of the only step once more.
  expect_drawn({"info", file.path(), "--ranges"}, "info: 0 of 8, 0 %");
  expect_drawn({"info", file.path(), "--all-steps"}, "info: 0 of 16, 0 %");
  EXPECT_EQ(tool_test::run_fldtool_on_terminal({"info", file.path()}).errors, "");
}

TEST(LongWork, InfoTellsProgressOfTheSearchForMotion) {
  const testkit::TemporaryDirectory directory;
  testkit::File file = one_of_each_file();
  for (const int cycle : {1, 2, 3}) {
    file.header.set_cycle(cycle, 0.1 * cycle);
    testkit::write_file(file, directory / ("s_" + std::to_string(cycle) + ".fld"));
  }
  const std::string path = (directory / "s_1.fld").string();
  // Five boxes and three ranges of one step, five parts at the first and the last step.
  expect_drawn({"info", path, "--ranges"}, "info: 0 of 18, 0 %");
  // One step and then all three of them; five parts at all steps.
  expect_drawn({"info", path, "--all-steps"}, "info: 0 of 47, 0 %");
}

TEST(LongWork, InfoTellsHowFarTheSearchForMotionIs) {
  // At the second step every part takes longer to read than the time between two lines of progress.
  const Result result = tool_test::run_fldtool_on_terminal(
      {"info", "slow_second_step.fld", "--ranges", "--plugin", FAKE_READER});
  // Six boxes and seven ranges, and six parts at each of the two steps.
  EXPECT_NE(result.errors.find("info: 24 of 25, 96 %"), std::string::npos) << result.errors;
}

TEST(LongWork, SampleTellsProgress) {
  const testkit::TemporaryDirectory directory;
  expect_drawn({"sample", directory.path().string()}, "samples: 0 of 4, 0 %");
}

TEST(LongWork, InfoAndSampleStopWhenTheyAreInterrupted) {
  const OneFile box(testkit::box_file({.nx = 60, .ny = 60, .nz = 60}));
  const testkit::TemporaryDirectory directory;
  using Words = std::vector<std::string>;
  for (const Words& words :
       {Words{"info", box.path(), "--ranges"}, Words{"sample", directory.path().string()}}) {
    const Result result = tool_test::run_fldtool_on_terminal_and_interrupt(words, SIGINT);
    EXPECT_EQ(result.status, 130) << words.front();
    EXPECT_TRUE(result.errors.ends_with(kErase + std::string("fldtool: interrupted\r\n"))) << result.errors;
    EXPECT_EQ(result.output, "");
  }
  EXPECT_FALSE(std::filesystem::exists(directory / "sector"));
}

TEST(LongWork, LayoutStopsWhenItIsInterrupted) {
  // A record of some 80 bytes of text for every value.
  const OneFile file(testkit::box_file({.nx = 10, .ny = 10, .nz = 10, .split = 1}));
  for (const int signal_number : {SIGINT, SIGTERM}) {
    const Result result = tool_test::run_fldtool_and_interrupt({"layout", file.path()}, signal_number);
    EXPECT_EQ(result.status, 130);
    EXPECT_EQ(result.errors, "fldtool: interrupted\n");
    EXPECT_NE(result.output, "");
    EXPECT_EQ(result.output.find("  end\n"), std::string::npos);
  }
}

}  // namespace
