// fldtool page on the command line. What browsers make of the pages is tested by page_test.mjs.
#include "gtest/gtest.h"
#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "nlohmann/json.hpp"
#include "samples/samples.h"
#include "testkit/file_writer.h"
#include "testkit/quantity.h"
#include "testkit/small_meshes.h"
#include "testkit/temporary_directory.h"
#include "tests/tool/run_fldtool.h"
#include "tests/tool/tool_datasets.h"

namespace {

using nlohmann::json;
using tool_test::Result;
using tool_test::run_fldtool;
using Words = std::vector<std::string>;

class PageCommand : public testing::Test {
 protected:
  static void SetUpTestSuite() {
    directory_ = new testkit::TemporaryDirectory();
    samples::write_samples(directory_->path());
  }
  static void TearDownTestSuite() { delete directory_; }

  static std::string path(const std::string& name) { return (*directory_ / name).string(); }
  static std::string tank() { return path("tank/tank_0.fld"); }
  static std::string channel() { return path("channel/channel.fld"); }

  static Result run(const std::string& file, const Words& options) {
    Words words = {"page", file, path("out.html")};
    words.insert(words.end(), options.begin(), options.end());
    return run_fldtool(words);
  }

  // What the page's script is told.
  static json scene(const std::string& file, const Words& options) {
    const Result result = run(file, options);
    EXPECT_EQ(result.status, 0) << result.errors;
    errors_ = result.errors;
    std::ifstream stream(path("out.html"), std::ios::binary);
    const std::string text{std::istreambuf_iterator<char>(stream), {}};
    const std::string start = "<script type=\"application/json\" id=\"scene\">";
    const std::size_t from = text.find(start) + start.size();
    return json::parse(text.substr(from, text.find("</script>", from) - from));
  }

  static Words names(const json& scene) {
    Words all;
    for (const json& part : scene["parts"]) all.push_back(part["name"]);
    return all;
  }

  static void expect_refused(const Words& options, int status, const std::string& message) {
    const Result result = run(channel(), options);
    EXPECT_EQ(result.status, status);
    EXPECT_NE(result.errors.find(message), std::string::npos) << result.errors;
    EXPECT_EQ(result.output, "");
  }

  static inline testkit::TemporaryDirectory* directory_ = nullptr;
  static inline std::string errors_;
};

TEST_F(PageCommand, ShowsTheSurfacesOutsideOfGroupsAtFirst) {
  const json told = scene(channel(), {});
  EXPECT_EQ(names(told),
            (Words{"floor", "sides", "inlet", "outlet", "obstacle", "ceiling", "&VFG_walls", "@wake_plane"}));
  for (const json& part : told["parts"]) EXPECT_EQ(part["shown"], part["number"] <= 6) << part;
  EXPECT_EQ(told["start"]["variable"], 0);
  EXPECT_EQ(told["variables"][0]["label"], "Static pressure [Pa]");
  EXPECT_EQ(told["variables"][0]["unit"], "Pa");
  EXPECT_EQ(told["file"], "channel.fld");
  EXPECT_EQ(told["date"], "2016/11/28 00:00:00");
  EXPECT_TRUE(told["title"].is_null());
  EXPECT_EQ(told["tree"][0]["name"], "Surfaces");
  EXPECT_EQ(told["tree"][0]["parts"], json({0, 1, 2, 3, 4, 5}));
  EXPECT_EQ(told["tree"][0]["folders"][0]["name"], "Grouping_Regions");
}

TEST_F(PageCommand, TakesThePicturesOptions) {
  const json told = scene(channel(), {"--parts", "wake,obstacle", "--faint", "inlet", "--variables",
                                      "Velocity.x,Pressure", "--range", "-1,2", "--colours", "inferno",
                                      "--view", "+x", "--edges", "--title", "A <channel>"});
  EXPECT_EQ(names(told), (Words{"inlet", "obstacle", "wake"}));
  EXPECT_EQ(told["parts"][0]["faint"], true);
  EXPECT_EQ(told["start"]["component"], 0);
  EXPECT_EQ(told["variables"][told["start"]["variable"].get<std::size_t>()]["name"], "Velocity");
  EXPECT_EQ(told["start"]["range"], json({-1, 2}));
  EXPECT_EQ(told["start"]["colours"], "inferno");
  EXPECT_EQ(told["start"]["from"], json({1, 0, 0}));
  EXPECT_EQ(told["start"]["edges"], true);
  EXPECT_EQ(told["title"], "A <channel>");
}

TEST_F(PageCommand, HasTheChosenVariablesAlone) {
  const json told = scene(channel(), {"--variables", "Temperature,MatOfElements"});
  ASSERT_EQ(told["variables"].size(), 2U);
  EXPECT_EQ(told["variables"][1]["element"], true);
  EXPECT_EQ(told["start"]["variable"], 0);
  const json all = scene(channel(), {"--variable", "Velocity,all"});
  EXPECT_EQ(all["variables"].size(), 4U);
  EXPECT_EQ(all["start"]["variable"], 2);
  EXPECT_EQ(all["start"]["component"], 3);
  const json none = scene(channel(), {"--variable", "none"});
  EXPECT_EQ(none["variables"].size(), 4U);
  EXPECT_EQ(none["start"]["variable"], nullptr);
}

// The channel's vorticity is tested where it is computed.
TEST_F(PageCommand, HasDerivedVariables) {
  const json told = scene(
      channel(), {"--parts", "wake", "--slice", "z=0.1", "--variables", "vorticity(Velocity).z,Pressure"});
  ASSERT_EQ(told["variables"].size(), 2U);
  EXPECT_EQ(told["variables"][0]["name"], "Pressure");
  EXPECT_EQ(told["variables"][1]["name"], "vorticity(Velocity)");
  EXPECT_EQ(told["variables"][1]["vector"], true);
  EXPECT_EQ(told["variables"][1]["element"], false);
  EXPECT_EQ(told["start"]["variable"], 1);
  EXPECT_EQ(told["start"]["component"], 2);
  const Result found =
      run_fldtool({"stats", channel(), "--parts", "wake", "--variable", "vorticity(Velocity).z", "--json"});
  const json range = json::parse(found.output)["steps"][0]["variables"][0]["parts"][0]["components"][0];
  EXPECT_FLOAT_EQ(told["start"]["range"][0].get<float>(), range["minimum"].get<float>());
  EXPECT_FLOAT_EQ(told["start"]["range"][1].get<float>(), range["maximum"].get<float>());
  expect_refused({"--variables", "vorticity(Pressure)"}, 2, "vorticity needs a vector");
}

// Names in files may differ by a control character alone.
TEST_F(PageCommand, HasDerivedVariablesOfVariablesThatLookTheSame) {
  testkit::File file = testkit::file_of(testkit::one_of_each());
  for (const char* name : {"a\tb", "a\nb"}) {
    file.region_sets.front().add(
        testkit::scalar_section({.name = name, .values = std::vector<double>(11, 1.5)}));
  }
  const tool_test::OneFile odd(file);
  const json told = scene(odd.path(), {"--parts", "volumes", "--variables", "grad(2),grad(1)"});
  ASSERT_EQ(told["variables"].size(), 2U);
  EXPECT_EQ(told["variables"][0]["name"], "grad(a b)");
  EXPECT_EQ(told["variables"][1]["name"], "grad(a b)");
  EXPECT_EQ(told["start"]["variable"], 1);
}

TEST_F(PageCommand, CutsVolumes) {
  const json told = scene(channel(), {"--parts", "wake", "--slice", "z=0.1,x=50%"});
  EXPECT_EQ(names(told), (Words{"wake", "wake at z = 0.1", "wake at x = 1.014"}));
  EXPECT_EQ(told["tree"][1]["name"], "Cuts");
  EXPECT_EQ(told["tree"][1]["parts"], json({1, 2}));
  EXPECT_EQ(told["scene"]["steps"][0]["parts"][1]["faces"][4], false);
}

// The impeller turns, the tank rests: its blades have one set of points and a matrix at each later step.
TEST_F(PageCommand, WritesTheTurningImpellerAsMatrices) {
  const json told = scene(tank(), {"--parts", "blade_1,tank_wall", "--variables", "Pressure"});
  const json& steps = told["scene"]["steps"];
  ASSERT_EQ(steps.size(), 8U);
  for (std::size_t i = 1; i < steps.size(); ++i) {
    EXPECT_EQ(steps[i]["parts"][0]["points"], steps[0]["parts"][0]["points"]);
    EXPECT_TRUE(steps[i]["parts"][0].contains("matrix"));
    EXPECT_EQ(steps[i]["parts"][1], steps[0]["parts"][1]);
  }
}

TEST_F(PageCommand, GivesUpPrecisionAndThenSteps) {
  const Words parts = {"--parts", "surfaces", "--variables", "Pressure,Velocity"};
  const auto with = [&](Words options) {
    options.insert(options.end(), parts.begin(), parts.end());
    return scene(tank(), options);
  };
  EXPECT_EQ(with({"--precision", "full"})["scene"]["valueBits"], 0);
  EXPECT_EQ(errors_, "");
  const auto size = [&] { return std::filesystem::file_size(path("out.html")); };
  const std::uintmax_t full = size();
  EXPECT_EQ(with({"--precision", "full", "--max-size", std::to_string(full - 1)})["scene"]["valueBits"], 16);
  EXPECT_NE(errors_.find("to stay within --max-size it has 16 bits for coordinates and 16 for values\n"),
            std::string::npos)
      << errors_;
  EXPECT_LT(size(), full);

  const json few = with({"--max-size", "700kB"});
  EXPECT_EQ(few["scene"]["valueBits"], 10);
  ASSERT_LT(few["scene"]["steps"].size(), 8U);
  EXPECT_EQ(few["scene"]["steps"].front()["step"], 0);
  EXPECT_EQ(few["scene"]["steps"].back()["step"], 7);
  EXPECT_NE(errors_.find(" of 8 steps (0 "), std::string::npos) << errors_;
  EXPECT_LE(size(), 700000U);
}

TEST_F(PageCommand, RefusesASizeThatNoStepFits) {
  expect_refused({"--max-size", "1kB"}, 4, "a page with one step takes 0.");
}

TEST_F(PageCommand, TellsPartsThatAStepDoesNotHave) {
  const std::string series = tool_test::write_series_that_loses_a_part(directory_->path());
  const json told = scene(series, {"--parts", "lower"});
  EXPECT_NE(errors_.find("step 1 does not have: volume lower"), std::string::npos) << errors_;
  EXPECT_TRUE(told["scene"]["steps"][1]["parts"][0].is_null());
}

// s_1 has the volume "lower" and the surface "@between" that s_0 does not have.
TEST_F(PageCommand, ListsPartsFromTheStepOnThatHasThem) {
  testkit::File file = tool_test::one_of_each_file();
  const testkit::TemporaryDirectory folder;
  file.header.set_cycle(1, 1.0);
  testkit::write_file(file, folder / "s_1.fld");
  tool_test::remove_lower(file);
  testkit::Surface outside = testkit::one_of_each().surface("outside");
  outside.name = tool_test::kOutsideBytes;
  file.region_sets.front().section("LS_SurfaceGeometry") = testkit::surfaces_section({outside});
  file.header.set_cycle(0, 0.0);
  testkit::write_file(file, folder / "s_0.fld");
  const std::string series = (folder / "s_0.fld").string();

  const json usual = scene(series, {});
  EXPECT_EQ(names(usual), (Words{"外", "@between"}));
  EXPECT_EQ(usual["parts"][0]["shown"], true);
  EXPECT_EQ(usual["parts"][1]["shown"], false) << "it is in a group";
  EXPECT_EQ(usual["tree"][0]["folders"][0]["name"], "Undefined_Regions");
  EXPECT_EQ(usual["tree"][0]["folders"][0]["parts"], json({1}));
  EXPECT_TRUE(usual["scene"]["steps"][0]["parts"][1].is_null());
  EXPECT_FALSE(usual["scene"]["steps"][1]["parts"][1].is_null());
  EXPECT_FALSE(usual["scene"]["steps"][1]["values"][0][1].is_null());

  const json volumes = scene(series, {"--parts", "volumes", "--slice", "x"});
  EXPECT_EQ(names(volumes), (Words{"upper", "upper at x = 1", "lower", "lower at x = 1"}));
  EXPECT_EQ(volumes["parts"][2]["shown"], true);
  EXPECT_EQ(volumes["tree"][0]["parts"], json({0, 2}));
  EXPECT_EQ(volumes["tree"][1]["parts"], json({1, 3}));
  EXPECT_EQ(errors_, "");
}

TEST_F(PageCommand, TellsTheStepThatCannotBeRead) {
  const testkit::TemporaryDirectory folder;
  const std::string series = tool_test::write_series_that_loses_a_part(folder.path());
  std::filesystem::resize_file(folder / "s_1.fld", std::filesystem::file_size(folder / "s_1.fld") / 2);
  const Words pages = {"page", series, path("out.html"), "--parts", "outside,upper"};
  const Result page = run_fldtool(pages);
  const Result picture = run_fldtool(
      {"render", series, "--output", path("out.png"), "--steps", "all", "--parts", "outside,upper"});
  EXPECT_EQ(page.status, 3);
  EXPECT_EQ(page.errors, picture.errors);
}

// The colours of a volume begin with the range that a picture of it has, which inner nodes take part in.
TEST_F(PageCommand, BeginsWithThePicturesRange) {
  const json told = scene(channel(), {"--parts", "volumes", "--variable", "Velocity"});
  const Result stats =
      run_fldtool({"stats", channel(), "--parts", "volumes", "--variables", "Velocity", "--json"});
  double low = 1e30;
  double high = -1e30;
  const json found = json::parse(stats.output);
  for (const json& part : found["steps"][0]["variables"][0]["parts"]) {
    const json& magnitude = part["components"].back();
    ASSERT_EQ(magnitude["component"], "magnitude");
    low = std::min(low, magnitude["minimum"].get<double>());
    high = std::max(high, magnitude["maximum"].get<double>());
  }
  EXPECT_NEAR(told["start"]["range"][0].get<double>(), low, 1e-6);
  EXPECT_NEAR(told["start"]["range"][1].get<double>(), high, 1e-6);
}

TEST_F(PageCommand, NamesTheCoordinatesOfAWholeCylindricalMesh) {
  testkit::Mesh mesh = testkit::one_tetrahedron();
  mesh.coordinate_system = 1;
  const tool_test::OneFile file(testkit::file_of(mesh));
  const json told = scene(file.path(), {"--parts", "wall,whole", "--slice", "y=0.2"});
  EXPECT_EQ(told["parts"][0]["axes"], json({"x", "y", "z"}));
  EXPECT_EQ(told["parts"][1]["axes"], json({"r", "theta", "z"}));
  EXPECT_EQ(told["parts"][2]["name"], "ALL_ELEMENTS at theta = 0.2");
}

TEST_F(PageCommand, RefusesWrongOptions) {
  expect_refused({"--slice", "w=1"}, 2, "--slice: 'w=1' is not AXIS, AXIS=COORDINATE or AXIS=PER_CENT%");
  expect_refused({"--slice", "x=a"}, 2, "--slice: 'x=a' is not");
  expect_refused({"--slice", "x0.5"}, 2, "--slice: 'x0.5' is not");
  expect_refused({"--range", "2,1"}, 2, "--range: '2,1' is not LOW,HIGH");
  expect_refused({"--range", "-1e308,1e308"}, 2, "--range: '-1e308,1e308' is not LOW,HIGH");
  expect_refused({"--range", "a"}, 2, "--range: 'a' is not LOW,HIGH");
  expect_refused({"--view", "up"}, 2, "--view: 'up' is not iso, +x");
  expect_refused({"--parts", "nothing"}, 2, "nothing");
  expect_refused({"--variable", "nothing"}, 2, "nothing");
  expect_refused({"--precision", "half"}, 2, "'half' is none of compact, full");
}

TEST_F(PageCommand, RefusesOtherKindsOfFiles) {
  const Result result = run_fldtool({"page", channel(), path("out.pdf")});
  EXPECT_EQ(result.status, 2);
  EXPECT_NE(result.errors.find("the name has to end in .html or .htm"), std::string::npos) << result.errors;
  EXPECT_FALSE(std::filesystem::exists(path("out.pdf")));
}

TEST_F(PageCommand, WritesToTheStandardOutput) {
  const Result result = run_fldtool({"page", channel(), "-"});
  EXPECT_EQ(result.status, 0) << result.errors;
  EXPECT_TRUE(result.output.starts_with("<!DOCTYPE html>"));
  EXPECT_TRUE(result.output.ends_with("</html>\n")) << result.output.substr(result.output.size() - 20);
}

TEST_F(PageCommand, TellsFilesThatCannotBeReadOrWritten) {
  EXPECT_EQ(run_fldtool({"page", path("missing.fld"), path("out.html")}).status, 3);
  EXPECT_EQ(run_fldtool({"page", channel(), path("no/folder/out.html")}).status, 4);
}

}  // namespace
