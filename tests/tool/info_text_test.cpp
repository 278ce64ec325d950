// What `fldtool info` prints for a person.
#include "gtest/gtest.h"
#include <string>

#include "testkit/file_writer.h"
#include "tests/tool/run_fldtool.h"
#include "tests/tool/tool_datasets.h"

namespace {

using tool_test::Result;
using tool_test::run_fldtool;

// Expects each text in the output, in this order.
void expect_in_order(const std::string& output, const std::vector<std::string>& texts) {
  std::size_t from = 0;
  for (const std::string& text : texts) {
    const std::size_t found = output.find(text, from);
    EXPECT_NE(found, std::string::npos) << "no '" << text << "' (in its place) in\n" << output;
    if (found != std::string::npos) from = found + text.size();
  }
}

TEST(InfoText, OneFile) {
  const tool_test::OneFile dataset(tool_test::one_of_each_file());
  const Result result = run_fldtool({"info", dataset.path(), "--ranges"});
  EXPECT_EQ(result.status, 0) << result.errors;
  expect_in_order(result.output,
                  {"file         " + dataset.path() + "\n",
                   "reader       Vantrel FLD 1.02, interface 2.04\n",
                   "Make group of parts: on\n",
                   "time set 1   timeset_geometry: 1 step, time 0\n",
                   "time set 2   timeset_variables: 1 step, time 0\n",
                   "region sets  1\n",
                   "geometry     the geometry does not change\n",
                   "case.fld\n",
                   "parts at step 0 (time 0)\n",
                   std::string("     1  surface  ") + tool_test::kOutsideShown + " ",
                   "6 tri, 6 quad; (0, 0, 0) to (2, 1, 2)\n",
                   "     2  surface  @between  ",
                   "1 quad; (1, 0, 0) to (1, 1, 1)\n",
                   "     3  volume   lower ",
                   "1 prism, 1 hex; ",
                   "     4  volume   upper ",
                   "1 tet, 1 pyramid; ",
                   "     5  whole    ALL_ELEMENTS         11  1 tet, 1 pyramid, 1 prism, 1 hex; ",
                   "groups\n",
                   "  Undefined_Regions: @between\n",
                   "variables at step 0 (time 0)\n",
                   "scalar  node     p ",
                   std::string(tool_test::kPressureShown) + " ",
                   "1 to 10, 1 undefined\n",
                   "vector  node     v ",
                   "x 0 to 2; y 0 to 1; z 0 to 2\n",
                   "scalar  element  MatOfElements ",
                   "1 to 2\n"});
  EXPECT_EQ(result.output.find("motion"), std::string::npos);
}

TEST(InfoText, ALongSeriesIsCut) {
  const testkit::TemporaryDirectory directory;
  for (int cycle = 0; cycle < 20; ++cycle) {
    testkit::File file = tool_test::one_of_each_file();
    file.header.set_cycle(cycle, 0.0);
    testkit::write_file(file, directory / ("long_" + std::to_string(cycle) + ".fld"));
  }
  const std::string path = (directory / "long_7.fld").string();
  const Result cut = run_fldtool({"info", path});
  EXPECT_EQ(cut.status, 0) << cut.errors;
  // Without times the cycle numbers stand for them.
  expect_in_order(cut.output, {"20 steps, times 0 to 19\n", "long_0.fld\n", "long_10.fld\n",
                               "... 8 more (--all-steps shows all)\n", "long_19.fld\n",
                               "variables at step 0 (time 0)\n"});
  EXPECT_EQ(cut.output.find("long_11.fld"), std::string::npos);
  const Result all = run_fldtool({"info", path, "--all-steps"});
  EXPECT_EQ(all.status, 0) << all.errors;
  expect_in_order(all.output,
                  {"long_11.fld\n", "variables at step 0 (time 0)\n", "variables at step 19 (time 19)\n"});
}

TEST(InfoText, DoubtfulGeometryIsTold) {
  testkit::File file = tool_test::one_of_each_file();
  testkit::Section& elements = file.region_sets.front().section("LS_Elements");
  std::vector<std::int32_t> nodes = {0, 1, 2, 3, 4, 5, 6, 99, 1, 8, 2, 5, 9, 6, 4, 5, 6, 7, 10, 5, 9, 6, 10};
  elements.blocks[3] = testkit::Block::integers(nodes);
  const tool_test::OneFile dataset(file);
  const Result result = run_fldtool({"info", dataset.path(), "--ranges"});
  EXPECT_EQ(result.status, 0) << result.errors;
  expect_in_order(result.output, {"warnings of the reader\n", "1 NODE NUMBERS OF ELEMENTS OUT OF RANGE IN "});
}

}  // namespace
