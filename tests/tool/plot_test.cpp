// fldtool plot, and --plot of other commands: charts as PNG and SVG.
#include "gtest/gtest.h"
#include <csignal>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "samples/channel.h"
#include "samples/tank.h"
#include "testkit/temporary_directory.h"
#include "tests/tool/pictures.h"
#include "tests/tool/run_fldtool.h"
#include "tests/tool/tool_datasets.h"

namespace {

using tool_test::expect_error;
using tool_test::one_of_each_file;
using tool_test::OneFile;
using tool_test::Result;
using tool_test::run_fldtool;

class Plot : public testing::Test {
 protected:
  std::string write(const std::string& name, const std::string& text) const {
    const auto path = directory / name;
    std::ofstream(path) << text;
    return path.string();
  }

  std::string read(const std::string& path) const {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
  }

  // Runs a command that draws; whether this machine can.
  static bool draws(const std::vector<std::string>& words) {
    const Result result = run_fldtool(words);
    if (result.status == 4 && result.errors.find("cannot render") != std::string::npos) return false;
    EXPECT_EQ(result.status, 0) << result.errors;
    return true;
  }

  testkit::TemporaryDirectory directory;
  const std::string out = (directory / "out.png").string();
  const std::string svg = (directory / "out.svg").string();
};

TEST_F(Plot, LinesInAVectorGraphic) {
  const std::string table = write("h.csv", "step,time,p,\"v, at (0 0)\"\n0,0,1,5\n1,0.5,2,\n2,1,4,3\n");
  if (!draws({"plot", table, "-o", svg, "--title", "A < B", "--y-title", "Pressure [Pa]"}))
    GTEST_SKIP() << "this machine cannot render";
  const std::string text = read(svg);
  EXPECT_EQ(text.substr(0, 4), "<svg") << text.substr(0, 100);
  EXPECT_NE(text.find("</svg>"), std::string::npos);
  EXPECT_NE(text.find("width=\"1200\""), std::string::npos) << text.substr(0, 400);
}

TEST_F(Plot, PicturesHaveTheirSizeAndDifferWithTheValues) {
  const std::string a = write("a.csv", "time,p\n0,1\n1,2\n2,4\n");
  const std::string b = write("b.csv", "time,p\n0,4\n1,2\n2,1\n");
  if (!draws({"plot", a, "-o", out, "--size", "640x480"})) GTEST_SKIP() << "this machine cannot render";
  const std::string first = read(out);
  EXPECT_EQ(first.substr(1, 3), "PNG");
  // The header's width and height.
  EXPECT_EQ(first.substr(16, 8), std::string("\0\0\x02\x80\0\0\x01\xe0", 8));
  ASSERT_TRUE(draws({"plot", b, "-o", out, "--size", "640x480"}));
  EXPECT_NE(read(out), first);
  ASSERT_TRUE(draws({"plot", a, b, "-o", out, "--size", "640x480"}));
  const std::string both = read(out);
  EXPECT_NE(both, first);
  ASSERT_TRUE(draws({"plot", a, "-o", out, "--size", "640x480", "--bars"}));
  EXPECT_NE(read(out), first);
  ASSERT_TRUE(draws({"plot", a, "-o", out, "--size", "640x480"}));
  EXPECT_EQ(read(out), first);
}

TEST_F(Plot, OfAHistoryAndOfItsTable) {
  const std::string file = samples::tank::write(directory.path()).file.string();
  const std::string table = (directory / "h.csv").string();
  if (!draws({"history", file, "--at", "0.1,0,0.2", "--variable", "Pressure", "-o", table, "--plot", out}))
    GTEST_SKIP() << "this machine cannot render";
  EXPECT_GT(read(out).size(), 5000U);
  EXPECT_EQ(read(table).substr(0, 10), "step,time,");
  ASSERT_TRUE(draws({"plot", table, "-o", out}));
}

TEST_F(Plot, OfALineAndAHistogram) {
  const OneFile file(one_of_each_file());
  if (!draws({"probe", file.path(), "--line", "0,0.5,0.5:2,0.5,0.5", "--variable", "v", "--plot", out}))
    GTEST_SKIP() << "this machine cannot render";
  EXPECT_EQ(read(out).substr(1, 3), "PNG");
  ASSERT_TRUE(
      draws({"stats", file.path(), "-p", "whole", "--variable", "v.x", "--histogram", "4", "--plot", svg}));
  EXPECT_NE(read(svg).find("<svg"), std::string::npos);
  expect_error({"probe", file.path(), "--at", "0,0,0", "--plot", out}, 2,
               "--plot draws values along a line: give --line");
}

TEST_F(Plot, WrongArgumentsAreExplained) {
  const std::string table = write("h.csv", "step,time,p\n0,0,1\n");
  expect_error({"plot", table, "-o", "out.jpg"}, 2,
               "out.jpg: cannot write '.jpg' files: the name has to end in .png or .svg");
  expect_error({"plot", table, "-o", out, "--y", "q"}, 2, table + ": there is no column 'q'");
  expect_error({"plot", table, "-o", out, "--x", "Time"}, 2,
               table + ": there is no column 'Time'; did you mean 'time'?");
  expect_error({"plot", table, "-o", out, "--size", "10x10"}, 2,
               "--size: '10x10' is not WIDTHxHEIGHT in pixels, 64 to 4096 each (see fldtool plot --help)");
  const std::string missing = (directory / "none.csv").string();
  expect_error({"plot", missing, "-o", out}, 4, missing + ": cannot read: No such file or directory");
  const std::string empty = write("empty.csv", "");
  expect_error({"plot", empty, "-o", out}, 4, empty + ": there is no line in it");
  const std::string ragged = write("ragged.csv", "a,b\n1,2\n3\n");
  expect_error({"plot", ragged, "-o", out}, 4, ragged + ": line 3 has 1 fields, and the first line has 2");
  const std::string words = write("words.csv", "time,a\n0,x\n1,y\n");
  expect_error({"plot", words, "-o", out}, 4, words + ": there is no column with numbers to draw");
  const std::string none = write("none2.csv", "time,a\n0,\n1,\n");
  expect_error({"plot", none, "-o", out, "--y", "a"}, 4, out + ": there is no number to draw");
}

// With a byte order mark, quotation marks, ends of lines of another system and empty lines.
TEST_F(Plot, TablesOfOtherProgramsAreRead) {
  const std::string plain = write("plain.csv", "time,a\n0,1\n1,3\n");
  if (!draws({"plot", plain, "-o", svg})) GTEST_SKIP() << "this machine cannot render";
  const std::string expected = read(svg);
  const std::string other = write("other.csv", "\xef\xbb\xbf\"time\",\"a\"\r\n0,1\r\n\r\n\"1\",3\r\n\r\n");
  ASSERT_TRUE(draws({"plot", other, "-o", svg, "--x", "time", "--y", "a"}));
  EXPECT_EQ(read(svg), expected);
  const std::string quoted = write("quoted.csv", "time,\"a \"\"x\"\", b\"\n0,1\n");
  EXPECT_TRUE(draws({"plot", quoted, "-o", out, "--y", "a \"x\", b"}));
}

TEST_F(Plot, TablesThatCannotBeDrawnAreExplained) {
  const auto expect = [&](const std::string& text, const std::string& reason) {
    const std::string table = write("odd.csv", text);
    expect_error({"plot", table, "-o", out}, 4,
                 reason.starts_with("numbers") ? out + ": " + reason : table + ": " + reason);
    EXPECT_FALSE(std::filesystem::exists(out)) << text;
  };
  expect("\xef\xbb\xbf\r\n\n", "there is no line in it");
  expect("time,a\n", "there is no column with numbers to draw");
  expect("time,a\n0,nan\n1,inf\n2,1e400\n", "there is no column with numbers to draw");
  expect("time,a\n0,1,5\n", "line 2 has 3 fields, and the first line has 2");
  expect("time,a\n\n1\n", "line 3 has 1 fields, and the first line has 2");
  expect("time,a\n0,1e308\n1,-1e308\n", "numbers beyond 1e300 cannot be drawn");
  expect("time,a\n-1e301,1\n1,2\n", "numbers beyond 1e300 cannot be drawn");
}

TEST_F(Plot, ExtremeNumbersAreDrawn) {
  for (const char* rows : {"0,1e300\n1,-1e300\n", "0,1e-320\n1,2e-320\n", "0,5\n0,5\n", "0,0\n"}) {
    if (!draws({"plot", write("extreme.csv", std::string("time,a\n") + rows), "-o", out}))
      GTEST_SKIP() << "this machine cannot render";
    EXPECT_GT(read(out).size(), 1000U) << rows;
  }
}

TEST_F(Plot, OutputsThatCannotBeWrittenAreExplained) {
  const std::string table = write("h.csv", "time,p\n0,1\n1,2\n");
  if (!draws({"plot", table, "-o", out})) GTEST_SKIP() << "this machine cannot render";
  std::filesystem::create_directory(directory / "folder.png");
  const std::string folder = (directory / "folder.png").string();
  const std::string nowhere = (directory / "none" / "a.png").string();
  expect_error({"plot", table, "-o", folder}, 4, folder + ": cannot write: Is a directory");
  expect_error({"plot", table, "-o", nowhere}, 4, nowhere + ": cannot write: No such file or directory");
  expect_error({"plot", table, "-o", "/dev/full"}, 4, "/dev/full: cannot write: No space left on device");
  expect_error({"plot", table, "-o", ""}, 2, "--output: the file name is empty (see fldtool plot --help)");
  expect_error({"plot", "", "-o", out}, 2, "FILE: the file name is empty (see fldtool plot --help)");
  expect_error({"plot", table, "-o", out, "--x", ""}, 2, "--x: the value is empty (see fldtool plot --help)");
  expect_error({"plot", table, "-o", out, "--y", "\"ü,\""}, 2, table + ": there is no column '\"ü,\"'");
}

// While it reads, which takes a table of this length some time.
TEST_F(Plot, StopsWhenItIsInterrupted) {
  std::string rows = "time,a\n";
  for (int i = 0; i < 400'000; ++i) rows += std::to_string(i) + ",1\n";
  const std::string table = write("long.csv", rows);
  const auto reads_it = [&](pid_t process) { return tool_test::has_open(process, table); };
  const Result result =
      tool_test::run_fldtool_and_interrupt_when({"plot", table, "-o", out}, reads_it, SIGINT);
  EXPECT_EQ(result.status, 130);
  EXPECT_EQ(result.errors, "fldtool: interrupted\n");
  EXPECT_FALSE(std::filesystem::exists(out));
}

}  // namespace
