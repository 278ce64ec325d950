// `fldtool sample`, and info on what it wrote.
#include "gtest/gtest.h"
#include <filesystem>
#include <fstream>
#include <map>
#include <set>
#include <sstream>
#include <string>

#include "nlohmann/json.hpp"
#include "testkit/temporary_directory.h"
#include "tests/tool/run_fldtool.h"

namespace {

using nlohmann::json;
using tool_test::Result;
using tool_test::run_fldtool;

// The samples, written once for all tests.
class Sample : public testing::Test {
 protected:
  static void SetUpTestSuite() {
    directory = new testkit::TemporaryDirectory();
    written = run_fldtool({"sample", (*directory / "samples").string()});
  }
  static void TearDownTestSuite() {
    delete directory;
    directory = nullptr;
  }

  // The JSON of info on a sample.
  static json info(const std::string& file) {
    const Result result =
        run_fldtool({"info", "--json", "--ranges", (directory->path() / "samples" / file).string()});
    EXPECT_EQ(result.status, 0) << result.errors;
    return json::parse(result.output);
  }

  // A part by its name.
  static json part(const json& found, const std::string& name) {
    for (const json& candidate : found["parts"]) {
      if (candidate["name"] == name) return candidate;
    }
    ADD_FAILURE() << "no part " << name;
    return {};
  }

  static testkit::TemporaryDirectory* directory;
  static Result written;
};
testkit::TemporaryDirectory* Sample::directory = nullptr;
Result Sample::written;

TEST_F(Sample, IsWrittenAndListed) {
  EXPECT_EQ(written.status, 0) << written.errors;
  EXPECT_EQ(written.errors, "");
  std::istringstream lines(written.output);
  std::map<std::string, std::string> files;
  for (std::string line; std::getline(lines, line);) {
    std::istringstream words(line);
    std::string name;
    words >> name >> files[name];
    EXPECT_TRUE(std::filesystem::exists(files[name])) << line;
  }
  EXPECT_EQ(files.size(), 4U);
  for (const auto& [name, file] : files) {
    EXPECT_EQ(run_fldtool({"info", file}).status, 0) << name;
    EXPECT_EQ(run_fldtool({"info", "--all-steps", file}).status, 0) << name;
  }
}

TEST_F(Sample, CannotBeWrittenBelowAFile) {
  const auto file = *directory / "plain";
  std::ofstream(file) << "text";
  const Result result = run_fldtool({"sample", file.string()});
  EXPECT_EQ(result.status, 4);
  EXPECT_EQ(result.errors, "fldtool: " + file.string() + ": cannot write: Not a directory\n");
}

TEST_F(Sample, ChannelHasAllShapesAndGroups) {
  const json found = info("channel/channel.fld");
  std::set<std::string> shapes;
  for (const auto& [shape, count] : found["region_sets"][0]["elements"].items()) shapes.insert(shape);
  EXPECT_EQ(shapes, (std::set<std::string>{"tet", "pyramid", "prism", "hex"}));
  EXPECT_EQ(part(found, "&VFG_walls")["group"], "Grouping_Regions");
  EXPECT_EQ(part(found, "@wake_plane")["group"], "Undefined_Regions");
  EXPECT_EQ(found["motion"]["compared_geometry_steps"], json::array());
}

TEST_F(Sample, OnlyTheTanksImpellerMoves) {
  const json found = info("tank/tank_0.fld");
  EXPECT_EQ(found["steps"].size(), 8U);
  EXPECT_EQ(found["changing_geometry"]["status"], 1);
  const std::set<int> moving = found["motion"]["moving_parts"].get<std::set<int>>();
  const std::set<std::string> fixed = {"tank_bottom", "tank_wall",     "baffles",
                                       "shaft",       "water_surface", "tank_zone"};
  for (const json& candidate : found["parts"]) {
    const auto name = candidate["name"].get<std::string>();
    const bool is_moving = moving.contains(candidate["number"].get<int>());
    if (fixed.contains(name)) {
      EXPECT_FALSE(is_moving) << name;
    }
    if (name.starts_with("blade_") || name == "impeller_zone" || name == "hub") {
      EXPECT_TRUE(is_moving) << name;
    }
  }
}

TEST_F(Sample, OversetHasTwoRegionSets) {
  const json found = info("overset/overset.fld");
  EXPECT_EQ(found["region_sets"].size(), 2U);
  EXPECT_EQ(found["parts"].front()["region_set"], nullptr);
  EXPECT_EQ(found["parts"].back()["region_set"], 1);
}

TEST_F(Sample, SectorIsACylindricalOne) {
  // The whole mesh is delivered as stored: radius, angle, height.
  const json found = info("sector/sector.fld");
  const json& whole = found["parts"].back();
  EXPECT_NEAR(whole["bounds"][1][1].get<double>(), 1.0471976, 1e-6);
  EXPECT_NEAR(part(found, "outer")["bounds"][1][1].get<double>(), 0.6 * 0.8660254, 1e-6);
}

}  // namespace
