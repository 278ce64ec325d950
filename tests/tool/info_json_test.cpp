// What `fldtool info --json` prints for programs.
#include "gtest/gtest.h"
#include <string>
#include <variant>
#include <vector>

#include "nlohmann/json.hpp"
#include "testkit/file_writer.h"
#include "tests/tool/run_fldtool.h"
#include "tests/tool/tool_datasets.h"

namespace {

using nlohmann::json;
using tool_test::Result;
using tool_test::run_fldtool;

// The JSON that info prints for a dataset with these options.
json info(const std::string& path, std::vector<std::string> options = {}) {
  options.insert(options.begin(), {"info", "--json", "--ranges", path});
  const Result result = run_fldtool(options);
  EXPECT_EQ(result.status, 0) << result.errors;
  return json::parse(result.output);
}

// Two steps: at the second, both times differ, the mesh is shifted along x by 3 and p by 100.
class TwoSteps : public testing::Test {
 protected:
  TwoSteps() {
    for (int step = 0; step < 2; ++step) {
      testkit::File file = tool_test::one_of_each_file();
      file.header.set_cycle(10 + step, 0.1 * (step + 1));
      testkit::RegionSet& set = file.region_sets.front();
      if (step == 1) {
        shift(set.section("LS_Nodes").blocks[1], 3.0);
        shift(set.section("LS_Scalar:p").blocks[2], 100.0);
      }
      testkit::write_file(file, directory / ("two_" + std::to_string(10 + step) + ".fld"));
    }
  }

  static void shift(testkit::Block& block, double by);
  std::string path() const { return (directory / "two_11.fld").string(); }

  testkit::TemporaryDirectory directory;
};

void TwoSteps::shift(testkit::Block& block, double by) {
  for (double& value : std::get<testkit::Reals>(block.data).values()) {
    if (value < 1.0e29) value += by;
  }
}

TEST(InfoJson, OneFile) {
  const tool_test::OneFile dataset(tool_test::one_of_each_file());
  const json found = info(dataset.path());
  EXPECT_EQ(found["file"], dataset.path());
  EXPECT_EQ(found["step"], 0);
  EXPECT_EQ(found["reader"]["name"], "Vantrel FLD");
  EXPECT_EQ(found["reader"]["release"], "1.02");
  EXPECT_EQ(found["reader"]["api_version"], "2.04");
  EXPECT_EQ(found["reader"]["options"],
            json({{"Simplify reading sequential FLD files", false}, {"Make group of parts", true}}));
  EXPECT_EQ(
      found["steps"],
      json::array(
          {{{"step", 0}, {"time", 0.0}, {"geometry_step", 0}, {"cycle", nullptr}, {"file", "case.fld"}}}));
  EXPECT_EQ(found["time_sets"][0], json({{"number", 1},
                                         {"description", "timeset_geometry"},
                                         {"of_geometry", true},
                                         {"of_variables", false},
                                         {"times", {0.0}}}));
  EXPECT_EQ(found["changing_geometry"]["status"], 0);
  EXPECT_EQ(found["motion"],
            json({{"compared_geometry_steps", json::array()}, {"moving_parts", json::array()}}));
  EXPECT_EQ(found["region_sets"],
            json::array({{{"region_set", 0},
                          {"part", 5},
                          {"nodes", 11},
                          {"elements", {{"tet", 1}, {"pyramid", 1}, {"prism", 1}, {"hex", 1}}}}}));
  EXPECT_EQ(found["warnings"], json::array());
  EXPECT_EQ(found["problems"], json::array());
  EXPECT_FALSE(found.contains("all_steps"));
}

TEST(InfoJson, PartsWithNamesInUtf8) {
  const tool_test::OneFile dataset(tool_test::one_of_each_file());
  const json found = info(dataset.path());
  ASSERT_EQ(found["parts"].size(), 5U);
  EXPECT_EQ(found["parts"][0], json({{"number", 1},
                                     {"name", tool_test::kOutsideShown},
                                     {"name_bytes_hex", "8a4f"},
                                     {"kind", "surface"},
                                     {"region_set", 0},
                                     {"group", nullptr},
                                     {"nodes", 11},
                                     {"elements", {{"tri", 6}, {"quad", 6}}},
                                     {"bounds", {{0.0, 0.0, 0.0}, {2.0, 1.0, 2.0}}}}));
  EXPECT_FALSE(found["parts"][1].contains("name_bytes_hex"));
  EXPECT_EQ(found["parts"][1]["group"], "Undefined_Regions");
  EXPECT_EQ(found["parts"][3]["kind"], "volume");
  EXPECT_EQ(found["parts"][4]["kind"], "whole");
  EXPECT_EQ(found["groups"], json::array({{{"name", "Undefined_Regions"}, {"parts", {"@between"}}}}));
}

TEST(InfoJson, VariablesWithRanges) {
  const tool_test::OneFile dataset(tool_test::one_of_each_file());
  const json found = info(dataset.path())["variables"];
  ASSERT_EQ(found.size(), 3U);
  EXPECT_EQ(
      found[0],
      json({{"number", 1},
            {"name", "p"},
            {"label", tool_test::kPressureShown},
            {"type", "scalar"},
            {"per", "node"},
            {"availability", "given"},
            {"ranges",
             {{{"minimum", 1.0}, {"maximum", 10.0}, {"mean", 5.5}, {"undefined", 1}, {"not_numbers", 0}}}}}));
  ASSERT_EQ(found[1]["ranges"].size(), 3U);
  EXPECT_EQ(found[1]["type"], "vector");
  EXPECT_EQ(found[1]["ranges"][0]["maximum"], 2.0);
  EXPECT_EQ(found[2]["name"], "MatOfElements");
  EXPECT_EQ(found[2]["per"], "element");
  EXPECT_EQ(found[2]["ranges"][0]["mean"], 1.5);
}

TEST(InfoJson, GroupsCanBeSwitchedOff) {
  const tool_test::OneFile dataset(tool_test::one_of_each_file());
  const json found = info(dataset.path(), {"--no-groups"});
  EXPECT_EQ(found["groups"], json::array());
  EXPECT_EQ(found["parts"][1]["group"], nullptr);
  EXPECT_EQ(found["reader"]["options"]["Make group of parts"], false);
}

TEST(InfoJson, AFileNameThatIsNotUtf8IsReplaced) {
  const tool_test::OneFile dataset(tool_test::one_of_each_file(), "\xff.fld");
  EXPECT_EQ(info(dataset.path())["steps"][0]["file"], "\uFFFD.fld");
}

TEST_F(TwoSteps, ListsStepsWithTimesCyclesAndFiles) {
  const json found = info(path());
  EXPECT_EQ(found["steps"],
            json::array(
                {{{"step", 0}, {"time", 0.1}, {"geometry_step", 0}, {"cycle", 10}, {"file", "two_10.fld"}},
                 {{"step", 1}, {"time", 0.2}, {"geometry_step", 1}, {"cycle", 11}, {"file", "two_11.fld"}}}));
  EXPECT_EQ(found["changing_geometry"]["status"], 1);
  EXPECT_EQ(found["motion"], json({{"compared_geometry_steps", {0, 1}}, {"moving_parts", {1, 2, 3, 4, 5}}}));
}

TEST_F(TwoSteps, ShowsTheChosenStep) {
  const json found = info(path(), {"--step", "1"});
  EXPECT_EQ(found["step"], 1);
  EXPECT_EQ(found["parts"][4]["bounds"], json({{3.0, 0.0, 0.0}, {5.0, 1.0, 2.0}}));
  EXPECT_EQ(found["variables"][0]["ranges"][0]["minimum"], 101.0);
}

TEST_F(TwoSteps, ShowsAllSteps) {
  const json found = info(path(), {"--all-steps"});
  ASSERT_EQ(found["all_steps"].size(), 2U);
  for (std::size_t step = 0; step < 2; ++step) {
    const json& contents = found["all_steps"][step];
    EXPECT_EQ(contents["step"], step);
    EXPECT_EQ(contents["bounds"][4][0][0], 3.0 * static_cast<double>(step));
    EXPECT_EQ(contents["variables"][0]["ranges"][0]["maximum"], 10.0 + 100.0 * static_cast<double>(step));
  }
  // The step that is shown is still the first one.
  EXPECT_EQ(found["parts"][4]["bounds"][0][0], 0.0);
}

TEST_F(TwoSteps, SimplifiedReadingKnowsTheFirstFileOnly) {
  const json found = info(path(), {"--simplify", "--step", "1"});
  EXPECT_EQ(found["reader"]["options"]["Simplify reading sequential FLD files"], true);
  EXPECT_EQ(found["steps"][0]["file"], "two_10.fld");
  EXPECT_EQ(found["steps"][1]["file"], nullptr);
  EXPECT_EQ(found["steps"][1]["cycle"], nullptr);
  EXPECT_EQ(found["variables"][0]["ranges"][0]["minimum"], 101.0);
}

TEST_F(TwoSteps, AQuantityThatAFileLacks) {
  testkit::File file = tool_test::one_of_each_file();
  file.header.set_cycle(12, 0.3);
  file.region_sets.front().remove("LS_Scalar:p");
  testkit::write_file(file, directory / "two_12.fld");
  const json found = info(path(), {"--step", "2"})["variables"][0];
  EXPECT_EQ(found["name"], "p");
  EXPECT_EQ(found["availability"], "not in this step");
  EXPECT_EQ(found["ranges"], json::array());
}

}  // namespace
