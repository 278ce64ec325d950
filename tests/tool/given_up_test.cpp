// A series over whose third file the reader gives up with a failed assertion: what comes before is told.
#include "gtest/gtest.h"
#include <string>
#include <vector>

#include "nlohmann/json.hpp"
#include "testkit/file_writer.h"
#include "testkit/motion.h"
#include "testkit/quantity.h"
#include "tests/tool/run_fldtool.h"
#include "tests/tool/tool_datasets.h"

namespace {

using nlohmann::json;
using tool_test::Result;
using tool_test::run_fldtool;

// Step 2 moves the mesh of a cycle that there is not.
class GivenUp : public testing::Test {
 protected:
  GivenUp() {
    for (int cycle = 0; cycle < 4; ++cycle) {
      testkit::File file;
      if (cycle == 0) file = tool_test::one_of_each_file();
      file.header.set_cycle(cycle, 0.5 * cycle);
      if (cycle > 0) {
        testkit::RegionSet& set = file.add_region_set();
        set.add(testkit::motion_section(
            {.base_cycle = cycle == 2 ? 99 : 0,
             .regions = {
                 {.names = {"upper"}, .actions = {testkit::Action::translate({0.0, 0.0, 1.0 * cycle})}}}}));
        set.add(
            testkit::scalar_section({.name = "p", .label = "", .values = std::vector<double>(11, cycle)}));
      }
      testkit::write_file(file, directory / ("g_" + std::to_string(cycle) + ".fld"));
    }
  }

  std::string path() const { return (directory / "g_0.fld").string(); }
  std::string failing() const { return (directory / "g_2.fld").string(); }

  static void expect_reason(const std::string& reason) {
    EXPECT_TRUE(reason.starts_with("step 2: the reader gave up: ")) << reason;
    EXPECT_TRUE(reason.ends_with("Assertion `ref_fldfile' failed.")) << reason;
  }
  // The last line, which is about the file of the step.
  void expect_error(const Result& result) const {
    EXPECT_EQ(result.status, 3);
    const std::string beginning = "fldtool: " + failing() + ": ";
    ASSERT_TRUE(result.errors.starts_with(beginning)) << result.errors;
    ASSERT_TRUE(result.errors.ends_with("\n")) << result.errors;
    expect_reason(result.errors.substr(beginning.size(), result.errors.size() - beginning.size() - 1));
  }

  testkit::TemporaryDirectory directory;
};

TEST_F(GivenUp, InfoShowsTheStepsBefore) {
  const Result result = run_fldtool({"info", path(), "--all-steps", "--json"});
  expect_error(result);
  const json found = json::parse(result.output);
  ASSERT_EQ(found["all_steps"].size(), 2U);
  EXPECT_EQ(found["all_steps"][1]["step"], 1);
  EXPECT_EQ(found["all_steps"][1]["variables"][0]["ranges"][0]["maximum"], 1.0);
  ASSERT_EQ(found["problems"].size(), 1U);
  const std::string problem = found["problems"][0];
  ASSERT_TRUE(problem.starts_with(failing() + ": ")) << problem;
  expect_reason(problem.substr(failing().size() + 2));
  const Result text = run_fldtool({"info", path(), "--all-steps"});
  expect_error(text);
  EXPECT_NE(text.output.find("\nvariables at step 1 (time 0.5)\n"), std::string::npos) << text.output;
}

TEST_F(GivenUp, StatsHaveTheStepsBefore) {
  const Result result = run_fldtool({"stats", path(), "--json", "--variables", "p", "-p", "whole"});
  expect_error(result);
  const json found = json::parse(result.output);
  ASSERT_EQ(found["steps"].size(), 2U);
  EXPECT_EQ(found["steps"][1]["variables"][0]["parts"][0]["components"][0]["mean"], 1.0);
  ASSERT_EQ(found["problems"].size(), 1U);
  const std::string problem = found["problems"][0];
  ASSERT_TRUE(problem.starts_with(failing() + ": ")) << problem;
  expect_reason(problem.substr(failing().size() + 2));
  const json last = json::parse(run_fldtool({"stats", path(), "--json", "--steps", "2-3"}).output);
  EXPECT_EQ(last["steps"], json::array());
}

TEST_F(GivenUp, DiffComparesTheStepsBefore) {
  const Result result = run_fldtool({"diff", path(), path(), "--json"});
  EXPECT_EQ(result.status, 3);
  const json found = json::parse(result.output);
  EXPECT_EQ(found["differences"], json::array());
  ASSERT_EQ(found["problems"].size(), 1U);
  EXPECT_EQ(found["problems"][0]["file"], failing());
  expect_reason(found["problems"][0]["reason"]);
  const Result steps = run_fldtool({"diff", path(), "--step", "2", "--step-b", "0"});
  EXPECT_EQ(steps.status, 3);
  EXPECT_EQ(steps.output, "no differences in what could be read\n");
}

TEST_F(GivenUp, ACommandForOneStepSaysWhy) {
  const Result result = run_fldtool({"values", path(), "--step", "2", "-p", "1", "--variable", "p"});
  EXPECT_EQ(result.status, 3);
  EXPECT_TRUE(result.errors.starts_with("fldtool: " + failing() + ": step 2: the reader gave up: "))
      << result.errors;
  EXPECT_EQ(result.output, "");
  EXPECT_EQ(run_fldtool({"values", path(), "--step", "3", "-p", "1", "--variable", "p"}).status, 0);
}

}  // namespace
