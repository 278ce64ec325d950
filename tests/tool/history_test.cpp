// fldtool history: a row of numbers per step, of points, statistics and integrals.
#include "gtest/gtest.h"
#include <fstream>
#include <string>
#include <vector>

#include "nlohmann/json.hpp"
#include "testkit/file_writer.h"
#include "testkit/quantity.h"
#include "testkit/small_meshes.h"
#include "testkit/temporary_directory.h"
#include "tests/tool/json_schema.h"
#include "tests/tool/run_fldtool.h"
#include "tests/tool/tool_datasets.h"

namespace {

using nlohmann::json;
using tool_test::Result;
using tool_test::run_fldtool;

// Three steps of one_of_each with p = (step + 1) (2 + z) and v = (6 step, 0, 0); the last file has no v.
class History : public testing::Test {
 protected:
  History() {
    const testkit::Mesh mesh = testkit::one_of_each();
    for (int step = 0; step < 3; ++step) {
      testkit::File file = testkit::file_of(mesh);
      testkit::RegionSet& set = file.region_sets.front();
      set.add(testkit::scalar_section({.name = "p",
                                       .label = "Pressure [Pa]",
                                       .values = testkit::at_nodes(mesh.nodes, [&](double, double, double z) {
                                         return (step + 1) * (2 + z);
                                       })}));
      const std::vector<double> x(mesh.nodes.x.values().size(), 6.0 * step);
      const std::vector<double> none(x.size(), 0.0);
      if (step < 2) set.add(testkit::vector_section({.name = "v", .x = x, .y = none, .z = none}));
      file.header.set_cycle(step, 0.5 * step);
      testkit::write_file(file, directory / ("s_" + std::to_string(step) + ".fld"));
    }
  }

  std::string path() const { return (directory / "s_0.fld").string(); }

  Result run(std::vector<std::string> options) const {
    options.insert(options.begin(), {"history", path()});
    return run_fldtool(options);
  }

  void expect_rows(const std::vector<std::string>& options, const std::string& rows) const {
    const Result result = run(options);
    EXPECT_EQ(result.status, 0) << result.errors;
    EXPECT_EQ(result.output, rows);
  }

  void expect_error(std::vector<std::string> options, const std::string& message) const {
    options.insert(options.begin(), {"history", path()});
    tool_test::expect_error(options, 2, message);
  }

  testkit::TemporaryDirectory directory;
};

TEST_F(History, OfPoints) {
  expect_rows({"--at", "0.5,0.5,0.5", "--at", "7,0,0", "--variables", "p,v.x"},
              "step,time,p at (0.5 0.5 0.5),v_x at (0.5 0.5 0.5),p at (7 0 0),v_x at (7 0 0)\n"
              "0,0,2.5,0,,\n"
              "1,0.5,5,6,,\n"
              "2,1,7.5,,,\n");
}

TEST_F(History, OfStatistics) {
  expect_rows(
      {"--stats", "minimum, maximum", "--parts", "upper,@between", "--variables", "p"},
      "step,time,minimum of p on @between,maximum of p on @between,minimum of p on upper,maximum of p "
      "on upper\n"
      "0,0,2,3,3,4\n"
      "1,0.5,4,6,6,8\n"
      "2,1,6,9,9,12\n");
}

TEST_F(History, OfIntegrals) {
  const Result result = run(
      {"--integrate", "measure,mean,flow,force", "--parts", "@between", "--variables", "p,v", "--jobs", "2"});
  EXPECT_EQ(result.status, 0) << result.errors;
  EXPECT_EQ(
      result.output,
      "step,time,measure of @between,mean of p over @between,mean of v.x over @between,mean of v.y over "
      "@between,mean of v.z over @between,mean of v.magnitude over @between,flow of v through "
      "@between,force_x on @between,force_y on @between,force_z on @between\n"
      "0,0,1,2.5,0,0,0,0,0,2.5,0,0\n"
      "1,0.5,1,5,6,0,0,6,6,5,0,0\n"
      "2,1,1,7.5,,,,,,7.5,0,0\n");
}

TEST_F(History, InJson) {
  const Result result =
      run({"--json", "--at", "0.5,0.5,0.5", "--stats", "mean", "-p", "upper", "--variable", "v.x"});
  EXPECT_EQ(result.status, 0) << result.errors;
  const json found = json::parse(result.output);
  EXPECT_EQ(tool_test::schema_complaints("history.schema.json", found), "");
  EXPECT_EQ(found["columns"][1]["name"], "mean of v.x on upper");
  EXPECT_EQ(found["steps"][1], (json{{"step", 1}, {"time", 0.5}, {"values", {6.0, 6.0}}}));
  EXPECT_EQ(found["steps"][2]["values"], json({nullptr, nullptr}));
}

TEST_F(History, OfAPartThatIsGoneHasNoNumbers) {
  const std::string series = tool_test::write_series_that_loses_a_part(directory / "");
  std::filesystem::remove(directory / "s_2.fld");
  const Result result =
      run_fldtool({"history", series, "--stats", "maximum", "-p", "lower,upper", "--variable", "p"});
  EXPECT_EQ(result.output, "step,time,maximum of p on lower,maximum of p on upper\n0,0,9,10\n1,1,,10\n");
}

TEST_F(History, WrongArgumentsAreExplained) {
  expect_error({}, "there is no number to print: give --at, --stats or --integrate");
  expect_error({"--stats", "mean"}, "--stats and --integrate need parts: give --parts");
  expect_error({"--stats", "median", "-p", "upper"},
               "--stats: 'median' is none of minimum, maximum, mean, deviation, undefined");
  expect_error({"--integrate", "flow,,mean", "-p", "upper"},
               "--integrate: '' is none of measure, integral, mean, flow, force, moment");
  expect_error({"--at", "0,0"}, "--at: '0,0' is not a point: write X,Y,Z");
}

TEST_F(History, GoesIntoAFile) {
  const std::string file = (directory / "h.json").string();
  EXPECT_EQ(run({"--at", "0.5,0.5,0.5", "--variable", "p", "-o", file}).status, 0);
  std::ifstream stream(file);
  EXPECT_EQ(json::parse(stream)["steps"].size(), 3U);
}

TEST_F(History, AStepThatCannotBeReadIsLeftOut) {
  const testkit::TemporaryDirectory broken;
  const std::string series = tool_test::write_series_with_a_broken_step(broken.path());
  const Result result = run_fldtool({"history", series, "--at", "0.5,0.5,0.5", "--variable", "v.x"});
  EXPECT_EQ(result.status, 3);
  EXPECT_NE(result.errors.find("case_2.fld: step 1: "), std::string::npos) << result.errors;
  EXPECT_EQ(result.output, "step,time,v_x at (0.5 0.5 0.5)\n0,1,0.5\n2,3,0.5\n");
}

// A variable that cannot be read does not matter unless it is asked for.
TEST_F(History, ReadsOnlyWhatIsAskedFor) {
  const testkit::TemporaryDirectory series;
  for (int step = 0; step < 3; ++step) {
    testkit::File file = tool_test::one_of_each_file();
    file.header.set_cycle(step, step);
    if (step > 0) file.region_sets.front().section("LS_Vector:v").blocks[2] = testkit::Block::integer(-5);
    testkit::write_file(file, series / ("s_" + std::to_string(step) + ".fld"));
  }
  const std::string first = (series / "s_0.fld").string();
  const Result scalar = run_fldtool({"history", first, "--at", "1.5,0.5,0.5", "--variable", "p"});
  EXPECT_EQ(scalar.status, 0) << scalar.errors;
  EXPECT_EQ(scalar.output, "step,time,p at (1.5 0.5 0.5)\n0,0,6\n1,1,6\n2,2,6\n");
  const Result vector = run_fldtool({"history", first, "--at", "1.5,0.5,0.5", "--variable", "v.x"});
  EXPECT_EQ(vector.status, 3);
  EXPECT_EQ(vector.output, "step,time,v_x at (1.5 0.5 0.5)\n0,0,1.5\n1,1,\n2,2,\n");
}

}  // namespace
