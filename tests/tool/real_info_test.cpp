// `fldtool info --json` on the solver results: parts, counts and boxes are the known ones.
//
// The environment variable FLD_REAL_DATA names a folder with one folder per dataset (tjunction, propeller),
// each holding the files of a series and an expected.json. Without it the tests skip.
#include "gtest/gtest.h"
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

#include "nlohmann/json.hpp"
#include "tests/testkit/emulator.h"
#include "tests/tool/run_fldtool.h"

namespace {

using nlohmann::json;
using tool_test::Result;
using tool_test::run_fldtool;

class RealInfo : public testing::TestWithParam<const char*> {
 protected:
  void SetUp() override {
    const char* data = std::getenv("FLD_REAL_DATA");
    if (data == nullptr || *data == '\0')
      GTEST_SKIP() << "FLD_REAL_DATA is not set: the solver results are not compared";
    const std::filesystem::path folder = std::filesystem::path(data) / GetParam();
    std::ifstream file(folder / "expected.json");
    ASSERT_TRUE(file) << "no expected.json in " << folder;
    expected = json::parse(file);
    const std::string last_file = expected["files"].back();
    const Result result = run_fldtool({"info", "--json", "--all-steps", (folder / last_file).string()});
    ASSERT_EQ(result.status, 0) << result.errors;
    found = json::parse(result.output);
  }

  // Compares two boxes.
  void expect_box(const json& box, const json& wanted, const std::string& where) const {
    const auto allowed = expected["tolerance"]["coordinates"].get<double>();
    for (std::size_t corner = 0; corner < 2; ++corner) {
      for (std::size_t axis = 0; axis < 3; ++axis) {
        EXPECT_NEAR(box[corner][axis].get<double>(), wanted[corner][axis].get<double>(), allowed) << where;
      }
    }
  }

  json expected;
  json found;
};
INSTANTIATE_TEST_SUITE_P(Datasets, RealInfo, testing::Values("tjunction", "propeller"),
                         [](const auto& info) { return info.param; });

TEST_P(RealInfo, Parts) {
  ASSERT_EQ(found["parts"].size(), expected["parts"].size());
  for (std::size_t i = 0; i < found["parts"].size(); ++i) {
    const json& part = found["parts"][i];
    const json& wanted = expected["parts"][i];
    for (const std::string key : {"number", "name", "kind", "region_set", "nodes", "elements"}) {
      if (kUnderEmulator && key == "name" && wanted.contains("name_bytes_hex")) continue;
      EXPECT_EQ(part[key], wanted[key]) << key << " of part " << i + 1;
    }
    EXPECT_EQ(part.contains("name_bytes_hex"), wanted.contains("name_bytes_hex"));
    if (wanted.contains("name_bytes_hex")) {
      EXPECT_EQ(part["name_bytes_hex"], wanted["name_bytes_hex"]);
    }
    expect_box(part["bounds"], expected["steps"][0]["parts"][i]["bounds"], "part " + std::to_string(i + 1));
  }
}

TEST_P(RealInfo, StepsWithFilesCyclesTimesAndBoxes) {
  ASSERT_EQ(found["steps"].size(), expected["steps"].size());
  for (std::size_t step = 0; step < found["steps"].size(); ++step) {
    const json& wanted = expected["steps"][step];
    EXPECT_EQ(found["steps"][step]["file"], wanted["file"]);
    EXPECT_EQ(found["steps"][step]["cycle"], wanted["cycle"]);
    EXPECT_NEAR(found["steps"][step]["time"].get<double>(), wanted["time"].get<double>(), 1e-6);
    for (std::size_t part = 0; part < wanted["parts"].size(); ++part) {
      expect_box(found["all_steps"][step]["bounds"][part], wanted["parts"][part]["bounds"],
                 "step " + std::to_string(step) + " part " + std::to_string(part + 1));
    }
  }
}

TEST_P(RealInfo, Groups) {
  json groups = {{"Grouping_Regions", json::array()}, {"Undefined_Regions", json::array()}};
  for (const json& group : found["groups"]) groups[group["name"].get<std::string>()] = group["parts"];
  EXPECT_EQ(groups, expected["groups"]);
}

TEST_P(RealInfo, VariablesWithRangesOfTheWholeMesh) {
  const auto allowed = expected["tolerance"]["values_relative"].get<double>();
  for (std::size_t step = 0; step < expected["steps"].size(); ++step) {
    const json& wanted = expected["steps"][step]["parts"].back()["values"];
    for (const json& variable : found["all_steps"][step]["variables"]) {
      const json& ranges = wanted[variable["name"].get<std::string>()];
      EXPECT_EQ(variable["availability"] == "not in this step", ranges.is_null()) << variable["name"];
      if (ranges.is_null()) continue;
      const json list = ranges.is_array() ? ranges : json::array({ranges});
      ASSERT_EQ(variable["ranges"].size(), list.size());
      for (std::size_t i = 0; i < list.size(); ++i) {
        const auto low = list[i]["min"].get<double>();
        const auto high = list[i]["max"].get<double>();
        EXPECT_NEAR(variable["ranges"][i]["minimum"].get<double>(), low, std::abs(low) * allowed)
            << variable["name"];
        EXPECT_NEAR(variable["ranges"][i]["maximum"].get<double>(), high, std::abs(high) * allowed)
            << variable["name"];
        EXPECT_EQ(variable["ranges"][i]["undefined"], list[i]["undefined"]) << variable["name"];
      }
    }
  }
}

}  // namespace
