// What commands do that take long: they tell how far they are on a terminal, and stop on Ctrl-C.
#include "gtest/gtest.h"
#include <csignal>
#include <string>

#include "testkit/box_dataset.h"
#include "tests/tool/run_fldtool.h"
#include "tests/tool/tool_datasets.h"

namespace {

using tool_test::one_of_each_file;
using tool_test::OneFile;
using tool_test::Result;

constexpr char kErase[] = "\r\x1b[K";

TEST(LongWork, CheckTellsProgressOnATerminalAndErasesIt) {
  const OneFile file(one_of_each_file());
  const Result result = tool_test::run_fldtool_on_terminal({"check", "--full", file.path()});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.output, file.path() + ": no findings\n");
  EXPECT_EQ(result.errors.find(std::string(kErase) + "checking: "), 0U) << result.errors;
  EXPECT_TRUE(result.errors.ends_with(kErase)) << result.errors;
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
