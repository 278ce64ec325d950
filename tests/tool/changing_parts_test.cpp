// A series whose second file has a volume region fewer, so that parts have other numbers there: a chosen part
// is the same one at every step, whatever its number.
#include "gtest/gtest.h"
#include <string>
#include <variant>
#include <vector>

#include "nlohmann/json.hpp"
#include "testkit/file_writer.h"
#include "testkit/mesh.h"
#include "testkit/small_meshes.h"
#include "tests/tool/run_fldtool.h"
#include "tests/tool/tool_datasets.h"

namespace {

using nlohmann::json;
using tool_test::Result;
using tool_test::run_fldtool;

// The parts are 外, @between, lower, upper and ALL_ELEMENTS at step 0, and the same without lower at step 1.
class ChangingParts : public testing::Test {
 protected:
  ChangingParts() : path(tool_test::write_series_that_loses_a_part(directory.path())) {}

  std::string missing(const std::string& step) const {
    return "fldtool: " + path + ": step " + step + " does not have: volume lower\n";
  }

  testkit::TemporaryDirectory directory;
  std::string path;
};

TEST_F(ChangingParts, StatsFollowThePart) {
  const Result result = run_fldtool({"stats", path, "-p", "upper,lower", "--variables", "p", "--json"});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.errors, missing("1"));
  const json found = json::parse(result.output);
  ASSERT_EQ(found["steps"].size(), 2U);
  const json& before = found["steps"][0]["variables"][0]["parts"];
  const json& after = found["steps"][1]["variables"][0]["parts"];
  ASSERT_EQ(before.size(), 2U);
  EXPECT_EQ(before[0]["name"], "lower");
  EXPECT_EQ(before[0]["part"], 3);
  EXPECT_EQ(before[1]["name"], "upper");
  EXPECT_EQ(before[1]["part"], 4);
  ASSERT_EQ(after.size(), 1U);
  EXPECT_EQ(after[0]["name"], "upper");
  EXPECT_EQ(after[0]["part"], 3);
  EXPECT_EQ(after[0]["components"][0]["values"], 6);
}

TEST_F(ChangingParts, StatsOfAPartThatIsGoneHaveNothing) {
  const Result result =
      run_fldtool({"stats", path, "-p", "lower", "--variables", "p", "--steps", "1", "--json"});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.errors, missing("1"));
  EXPECT_EQ(json::parse(result.output)["steps"][0]["variables"][0]["parts"], json::array());
}

// Seen from the other side, volumes are also those that the first step does not have.
TEST_F(ChangingParts, WordsMeanThePartsOfEachStep) {
  testkit::File less = tool_test::one_of_each_file();
  tool_test::remove_lower(less);
  testkit::File more = tool_test::one_of_each_file();
  more.header.set_cycle(1, 1.0);
  testkit::write_file(less, directory / "more_0.fld");
  testkit::write_file(more, directory / "more_1.fld");
  const Result result = run_fldtool(
      {"stats", (directory / "more_0.fld").string(), "-p", "volumes", "--variables", "p", "--json"});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.errors, "");
  const json found = json::parse(result.output);
  EXPECT_EQ(found["steps"][0]["variables"][0]["parts"].size(), 1U);
  ASSERT_EQ(found["steps"][1]["variables"][0]["parts"].size(), 2U);
  EXPECT_EQ(found["steps"][1]["variables"][0]["parts"][0]["name"], "lower");
}

TEST_F(ChangingParts, DiffTellsThePartThatOneStepLacks) {
  const auto expect = [&](const std::vector<std::string>& options, const std::string& output) {
    std::vector<std::string> arguments = {"diff", path};
    arguments.insert(arguments.end(), options.begin(), options.end());
    const Result result = run_fldtool(arguments);
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.errors, "");
    EXPECT_EQ(result.output, output);
  };
  expect({"--step", "1", "--step-b", "0", "-p", "lower"},
         "steps 1 and 0: part 3 (volume lower): missing -> volume\n1 difference\n");
  expect({"--step", "0", "--step-b", "1", "-p", "3"},
         "steps 0 and 1: part 3 (volume lower): volume -> missing\n1 difference\n");
  expect({"--step", "0", "--step-b", "1"},
         "steps 0 and 1: part 3 (volume lower): volume -> missing\n1 difference\n");
  EXPECT_EQ(run_fldtool({"diff", path, "--step", "0", "--step-b", "1", "-p", "upper,whole"}).output,
            "no differences\n");
  const json found =
      json::parse(run_fldtool({"diff", path, "--step", "0", "--step-b", "1", "--json"}).output);
  ASSERT_EQ(found["differences"].size(), 1U);
  EXPECT_EQ(found["differences"][0]["kind"], "part");
  EXPECT_EQ(found["differences"][0]["step_b"], 1);
  EXPECT_EQ(found["differences"][0]["a"], "volume");
}

TEST_F(ChangingParts, DiffMatchesPartsAtEveryStep) {
  testkit::File whole = tool_test::one_of_each_file();
  testkit::write_file(whole, directory / "whole_0.fld");
  whole.header.set_cycle(1, 1.0);
  testkit::write_file(whole, directory / "whole_1.fld");
  EXPECT_EQ(run_fldtool({"diff", path, (directory / "whole_0.fld").string()}).output,
            "step 1: part 3 (volume lower): missing -> volume\n1 difference\n");
}

TEST_F(ChangingParts, InfoComparesAPartWithItself) {
  const json found = json::parse(run_fldtool({"info", path, "--all-steps", "--json"}).output);
  EXPECT_EQ(found["motion"], json({{"compared_geometry_steps", {0, 1}}, {"moving_parts", json::array()}}));
  const json& before = found["all_steps"][0]["bounds"];
  const json& after = found["all_steps"][1]["bounds"];
  ASSERT_EQ(after.size(), 5U);
  EXPECT_EQ(after[2], nullptr);
  for (const std::size_t part : {0U, 1U, 3U, 4U}) EXPECT_EQ(after[part], before[part]) << part;
  EXPECT_EQ(after[4], json({{0.0, 0.0, 0.0}, {2.0, 1.0, 2.0}}));
}

TEST_F(ChangingParts, InfoTellsWhatMovesByTheNumberShown) {
  testkit::File moved = tool_test::one_of_each_file();
  tool_test::remove_lower(moved);
  moved.header.set_cycle(1, 1.0);
  // The apex of the tetrahedron and the pyramid: of upper, the outside and the whole mesh.
  std::get<testkit::Reals>(moved.region_sets.front().section("LS_Nodes").blocks[3].data).values()[10] += 0.5;
  testkit::write_file(moved, directory / "s_1.fld");
  const json first = json::parse(run_fldtool({"info", path, "--ranges", "--json"}).output);
  EXPECT_EQ(first["motion"]["moving_parts"], json::array({1, 4, 5}));
  const json second = json::parse(run_fldtool({"info", path, "--ranges", "--step", "1", "--json"}).output);
  EXPECT_EQ(second["motion"]["moving_parts"], json::array({1, 3, 4}));
}

}  // namespace
