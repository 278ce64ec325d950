// The line that tells how far long work has come.
#include "tool/progress.h"

#include "gtest/gtest.h"
#include <chrono>
#include <string>
#include <unistd.h>

#include "tests/tool/terminal.h"

namespace {

using namespace std::chrono_literals;
using tool::Progress;
using tool::progress_text;
using tool::ProgressUnit;
using tool_test::kErase;
using tool_test::Terminal;

TEST(ProgressText, TellsBytesWithRateAndRemainingTime) {
  EXPECT_EQ(progress_text("a.fld", 1'000'000'000, 4'000'000'000, ProgressUnit::bytes, 10, 100),
            "a.fld: 1.0 of 4.0 GB, 25 %, 100.0 MB/s, 0:30 left");
  EXPECT_EQ(progress_text("a.fld", 300, 900, ProgressUnit::bytes, 2, 100),
            "a.fld: 300 of 900 B, 33 %, 150 B/s, 0:04 left");
}

TEST(ProgressText, TellsSteps) {
  EXPECT_EQ(progress_text("steps", 3, 25, ProgressUnit::steps, 2, 100),
            "steps: 3 of 25, 12 %, 1.5/s, 0:15 left");
  EXPECT_EQ(progress_text("steps", 1, 10'000, ProgressUnit::steps, 1, 100),
            "steps: 1 of 10000, 0 %, 1/s, 2:46:39 left");
}

TEST(ProgressText, PromisesNothingBeforeAnythingIsDone) {
  EXPECT_EQ(progress_text("steps", 0, 25, ProgressUnit::steps, 5, 100), "steps: 0 of 25, 0 %");
  EXPECT_EQ(progress_text("steps", 1, 25, ProgressUnit::steps, 0, 100), "steps: 1 of 25, 4 %");
  EXPECT_EQ(progress_text("empty", 0, 0, ProgressUnit::bytes, 1, 100), "empty: 0 of 0 B");
}

TEST(ProgressText, StaysBelowItsTotal) {
  EXPECT_EQ(progress_text("steps", 9, 3, ProgressUnit::steps, 0, 100), "steps: 3 of 3, 100 %");
}

TEST(ProgressText, IsCutBetweenCharacters) {
  EXPECT_EQ(progress_text("steps", 0, 25, ProgressUnit::steps, 0, 8), "steps: 0");
  EXPECT_EQ(progress_text("a\u5916", 0, 25, ProgressUnit::steps, 0, 3), "a");
  EXPECT_EQ(progress_text("a\u5916", 0, 25, ProgressUnit::steps, 0, 4), "a\u5916");
}

TEST(ProgressLine, IsDrawnTenTimesASecondAndErasedAtTheEnd) {
  const Terminal terminal;
  Progress::Clock::time_point time;
  {
    Progress progress("steps", 10, ProgressUnit::steps, terminal.screen(), [&] { return time; });
    EXPECT_EQ(terminal.take(), "");
    progress.update(0);
    EXPECT_EQ(terminal.take(), kErase + std::string("steps: 0 of 10, 0 %"));
    time += 99ms;
    progress.update(1);
    EXPECT_EQ(terminal.take(), "");
    time += 901ms;
    progress.update(2);
    EXPECT_EQ(terminal.take(), kErase + std::string("steps: 2 of 10, 20 %, 2/s, 0:04 left"));
  }
  EXPECT_EQ(terminal.take(), kErase);
}

TEST(ProgressLine, MakesRoomForOtherText) {
  const Terminal terminal;
  Progress::Clock::time_point time;
  Progress progress("steps", 10, ProgressUnit::steps, terminal.screen(), [&] { return time; });
  progress.update(1);
  terminal.take();
  progress.erase();
  EXPECT_EQ(terminal.take(), kErase);
  progress.erase();
  EXPECT_EQ(terminal.take(), "");
}

TEST(ProgressLine, FitsTheTerminal) {
  const Terminal terminal(12);
  Progress progress("a long name", 10, ProgressUnit::steps, terminal.screen());
  progress.update(1);
  EXPECT_EQ(terminal.take(), kErase + std::string("a long name"));
}

TEST(ProgressLine, IsNotDrawnIntoAPipe) {
  int pipe_ends[2];
  ASSERT_EQ(pipe2(pipe_ends, O_NONBLOCK), 0);
  {
    Progress progress("steps", 10, ProgressUnit::steps, pipe_ends[1]);
    progress.update(1);
    progress.erase();
  }
  char byte = 0;
  EXPECT_EQ(read(pipe_ends[0], &byte, 1), -1);
  close(pipe_ends[0]);
  close(pipe_ends[1]);
}

}  // namespace
