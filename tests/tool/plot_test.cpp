// fldtool plot, and --plot of other commands: charts as PNG and SVG.
#include "gtest/gtest.h"
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

using tool_test::one_of_each_file;
using tool_test::OneFile;
using tool_test::Result;
using tool_test::run_fldtool;

class RenderPlot : public testing::Test {
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

  void expect_error(const std::vector<std::string>& words, int status, const std::string& message) const {
    const Result result = run_fldtool(words);
    EXPECT_EQ(result.status, status);
    EXPECT_EQ(result.errors, "fldtool: " + message + "\n");
  }

  testkit::TemporaryDirectory directory;
  const std::string out = (directory / "out.png").string();
  const std::string svg = (directory / "out.svg").string();
};

TEST_F(RenderPlot, LinesInAVectorGraphic) {
  const std::string table = write("h.csv", "step,time,p,\"v, at (0 0)\"\n0,0,1,5\n1,0.5,2,\n2,1,4,3\n");
  if (!draws({"plot", table, "-o", svg, "--title", "A < B", "--y-title", "Pressure [Pa]"}))
    GTEST_SKIP() << "this machine cannot render";
  const std::string text = read(svg);
  EXPECT_EQ(text.substr(0, 4), "<svg") << text.substr(0, 100);
  EXPECT_NE(text.find("</svg>"), std::string::npos);
  EXPECT_NE(text.find("width=\"1200\""), std::string::npos) << text.substr(0, 400);
}

TEST_F(RenderPlot, PicturesHaveTheirSizeAndDifferWithTheValues) {
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

TEST_F(RenderPlot, OfAHistoryAndOfItsTable) {
  const std::string file = samples::tank::write(directory.path()).file.string();
  const std::string table = (directory / "h.csv").string();
  if (!draws({"history", file, "--at", "0.1,0,0.2", "--variable", "Pressure", "-o", table, "--plot", out}))
    GTEST_SKIP() << "this machine cannot render";
  EXPECT_GT(read(out).size(), 5000U);
  EXPECT_EQ(read(table).substr(0, 10), "step,time,");
  ASSERT_TRUE(draws({"plot", table, "-o", out}));
}

TEST_F(RenderPlot, OfALineAndAHistogram) {
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

TEST_F(RenderPlot, WrongArgumentsAreExplained) {
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

}  // namespace
