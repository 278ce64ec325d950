// fldtool stats: ranges, means and counts of values, on good, broken and empty input.
#include "gtest/gtest.h"
#include <algorithm>
#include <cmath>
#include <csignal>
#include <cstddef>
#include <sstream>
#include <string>
#include <vector>

#include "nlohmann/json.hpp"
#include "samples/sector.h"
#include "testkit/box_dataset.h"
#include "testkit/file_writer.h"
#include "testkit/quantity.h"
#include "testkit/small_meshes.h"
#include "testkit/temporary_directory.h"
#include "tests/tool/run_fldtool.h"
#include "tests/tool/tool_datasets.h"

namespace {

using nlohmann::json;
using tool_test::kUndefinedValue;
using tool_test::one_of_each_file;
using tool_test::OneFile;
using tool_test::Result;
using tool_test::run_fldtool;

// A tetrahedron with a scalar "p" of these values and a vector "v" of these components.
testkit::File tetrahedron_with(const std::vector<double>& p, const std::vector<double>& x,
                               const std::vector<double>& y) {
  testkit::File file = testkit::file_of(testkit::one_tetrahedron());
  testkit::RegionSet& set = file.region_sets.front();
  set.add(testkit::scalar_section({.name = "p", .label = "Pressure", .values = p}));
  set.add(testkit::vector_section(
      {.name = "v", .label = "Velocity", .x = x, .y = y, .z = std::vector<double>(4, 0.0)}));
  return file;
}

json stats(const std::string& path, std::vector<std::string> options = {}) {
  options.insert(options.begin(), {"stats", "--json", path});
  const Result result = run_fldtool(options);
  EXPECT_EQ(result.status, 0) << result.errors;
  return json::parse(result.output);
}

json place(int row, const std::vector<double>& coordinates) {
  return {{"row", row}, {"coordinates", coordinates}};
}

TEST(Stats, ScalarsAndVectorsWithMagnitude) {
  const OneFile file(
      tetrahedron_with({1, 2, kUndefinedValue, std::nan("")}, {3, 0, kUndefinedValue, -3}, {4, 0, 0, 0}));
  const json found = stats(file.path(), {"-p", "whole", "--variables", "p,v"});
  EXPECT_EQ(found["file"], file.path());
  ASSERT_EQ(found["steps"].size(), 1U);
  EXPECT_EQ(found["steps"][0]["step"], 0);
  EXPECT_EQ(found["steps"][0]["time"], 0.0);
  EXPECT_EQ(found["problems"], json::array());
  const json& variables = found["steps"][0]["variables"];
  ASSERT_EQ(variables.size(), 2U);
  EXPECT_EQ(variables[0]["name"], "p");
  EXPECT_EQ(variables[0]["label"], "Pressure");
  EXPECT_EQ(variables[0]["per"], "node");
  EXPECT_EQ(variables[0]["parts"][0]["name"], "ALL_ELEMENTS");
  EXPECT_EQ(variables[0]["parts"][0]["components"], json::array({{{"component", nullptr},
                                                                  {"values", 4},
                                                                  {"minimum", 1.0},
                                                                  {"maximum", 2.0},
                                                                  {"mean", 1.5},
                                                                  {"undefined", 1},
                                                                  {"not_numbers", 1},
                                                                  {"deviation", 0.5},
                                                                  {"minimum_at", place(1, {0, 0, 0})},
                                                                  {"maximum_at", place(2, {1, 0, 0})}}}));
  const json& vector = variables[1]["parts"][0]["components"];
  ASSERT_EQ(vector.size(), 4U);
  EXPECT_EQ(vector[0]["component"], "x");
  EXPECT_EQ(vector[0]["minimum"], -3.0);
  EXPECT_EQ(vector[3], json({{"component", "magnitude"},
                             {"values", 4},
                             {"minimum", 0.0},
                             {"maximum", 5.0},
                             {"mean", 8.0 / 3.0},
                             {"undefined", 1},
                             {"not_numbers", 0},
                             {"deviation", std::sqrt(38.0 / 9.0)},
                             {"minimum_at", place(2, {1, 0, 0})},
                             {"maximum_at", place(1, {0, 0, 0})}}));
}

TEST(Stats, TextForPeople) {
  const OneFile file(tetrahedron_with({1, 2, 3, 6}, {3, 0, 0, 0}, {4, 0, 0, 0}));
  const Result result =
      run_fldtool({"stats", file.path(), "-p", "ALL_ELEMENTS", "--variables", "p", "--histogram", "2"});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.errors, "");
  for (const char* line :
       {"step 0 (time 0)\n  p, Pressure, per node\n",
        "    part  name                  of           values  undefined     NaN      minimum      maximum    "
        "     "
        "mean    deviation\n",
        "  ALL_ELEMENTS                            4          0       0            1            6            "
        "3 "
        "     "
        "1.87083\n",
        "\n          minimum at node 1 (0, 0, 0), maximum at node 4 (0, 0, 1)\n",
        "\n                     1 to 3.5                   3  ########################################\n"
        "                   3.5 to 6                     1  ##############\n"}) {
    EXPECT_NE(result.output.find(line), std::string::npos) << line << result.output;
  }
}

TEST(Stats, CommaSeparated) {
  const OneFile file(tetrahedron_with({1, 2, 3, 6}, {3, 0, 0, 0}, {4, 0, 0, 0}));
  const Result result =
      run_fldtool({"stats", file.path(), "--csv", "-p", "ALL_ELEMENTS", "--variables", "p,v.magnitude"});
  EXPECT_EQ(result.status, 0) << result.errors;
  const std::string header =
      "step,time,part,kind,name,variable,component,per,availability,values,undefined,nan,minimum,maximum,"
      "mean,"
      "deviation,axes,minimum_at,minimum_x,minimum_y,minimum_z,maximum_at,maximum_x,maximum_y,maximum_z\n";
  ASSERT_TRUE(result.output.starts_with(header)) << result.output;
  const auto fields = [](const std::string& line) { return std::count(line.begin(), line.end(), ','); };
  std::istringstream lines(result.output.substr(header.size()));
  std::string p;
  std::string v;
  std::getline(lines, p);
  std::getline(lines, v);
  EXPECT_TRUE(
      p.ends_with(",whole,ALL_ELEMENTS,p,,node,given,4,0,0,1,6,3,1.8708286933869707,x y z,1,0,0,0,4,0,0,1"))
      << p;
  EXPECT_TRUE(
      v.ends_with(",whole,ALL_ELEMENTS,v,magnitude,node,given,4,0,0,0,5,1.25,2.165063509461097,x y z,"
                  "2,1,0,0,1,0,0,0"))
      << v;
  EXPECT_EQ(fields(p), fields(header));
  EXPECT_EQ(fields(v), fields(header));
  EXPECT_FALSE(std::getline(lines, p));
}

TEST(Stats, CommaSeparatedWithoutNumbersHasEmptyFields) {
  const OneFile file(tetrahedron_with({kUndefinedValue, kUndefinedValue, kUndefinedValue, kUndefinedValue},
                                      {3, 0, 0, 0}, {4, 0, 0, 0}));
  const std::string output =
      run_fldtool({"stats", file.path(), "--csv", "-p", "whole", "--variables", "p"}).output;
  const std::size_t line = output.find('\n') + 1;
  EXPECT_EQ(std::count(output.begin(), output.begin() + static_cast<std::ptrdiff_t>(line), ','),
            std::count(output.begin() + static_cast<std::ptrdiff_t>(line), output.end(), ','))
      << output;
}

TEST(Stats, AMinimumPerElementIsAtItsCentre) {
  const OneFile file(one_of_each_file());
  const json found = stats(file.path(), {"-p", "whole", "--variables", "MatOfElements"});
  const json& component = found["steps"][0]["variables"][0]["parts"][0]["components"][0];
  EXPECT_EQ(component["minimum_at"]["row"], 3);
  EXPECT_EQ(component["minimum_at"]["coordinates"], json({1.3333334, 0.5, 0.5}));
  EXPECT_EQ(component["maximum_at"], place(1, {1.125, 0.5, 1.25}));
}

TEST(Stats, CoordinatesOfACylindricalMeshHaveTheirNames) {
  const testkit::TemporaryDirectory directory;
  const std::string file = samples::sector::write(directory.path()).file.string();
  const Result whole = run_fldtool({"stats", file, "-p", "whole", "--variables", "1"});
  EXPECT_NE(whole.output.find("minimum at node "), std::string::npos) << whole.output;
  EXPECT_NE(whole.output.find(" (r "), std::string::npos) << whole.output;
  const Result surfaces = run_fldtool({"stats", file, "-p", "surfaces", "--variables", "1"});
  EXPECT_EQ(surfaces.output.find(" (r "), std::string::npos) << surfaces.output;
  EXPECT_TRUE(run_fldtool({"values", file, "-p", "whole", "--variable", "1", "--rows", "1"})
                  .output.starts_with("node,r,theta,z,"));
  EXPECT_TRUE(run_fldtool({"values", file, "-p", "1", "--variable", "1", "--rows", "1"})
                  .output.starts_with("node,x,y,z,"));
}

TEST(Stats, HistogramsInJson) {
  const OneFile file(tetrahedron_with({1, 2, 3, 6}, {3, 0, 0, 0}, {4, 0, 0, 0}));
  const json found = stats(file.path(), {"-p", "whole", "--variables", "p", "--histogram", "5"});
  EXPECT_EQ(found["steps"][0]["variables"][0]["parts"][0]["components"][0]["histogram"],
            json({{"low", 1.0}, {"high", 6.0}, {"counts", {1, 1, 1, 0, 1}}}));
}

TEST(Stats, EverythingWithoutOptions) {
  const OneFile file(one_of_each_file());
  const json found = stats(file.path());
  ASSERT_EQ(found["steps"][0]["variables"].size(), 3U);
  for (const json& variable : found["steps"][0]["variables"]) EXPECT_EQ(variable["parts"].size(), 5U);
  const json& materials = found["steps"][0]["variables"][2];
  EXPECT_EQ(materials["per"], "element");
  EXPECT_EQ(materials["parts"][4]["components"][0]["mean"], 1.5);
}

TEST(Stats, StepsAreChosen) {
  const testkit::TemporaryDirectory directory;
  for (int cycle = 0; cycle < 4; ++cycle) {
    testkit::File file = tetrahedron_with({1.0 * cycle, 2, 3, 4}, {1, 2, 3, 4}, {1, 2, 3, 4});
    file.header.set_cycle(cycle, 0.5 * cycle);
    if (cycle == 3) file.region_sets.front().remove("LS_Scalar:p");
    testkit::write_file(file, directory / ("s_" + std::to_string(cycle) + ".fld"));
  }
  const std::string path = (directory / "s_0.fld").string();
  const json found = stats(path, {"--steps", "0,2-3", "--variables", "p", "-p", "whole"});
  ASSERT_EQ(found["steps"].size(), 3U);
  EXPECT_EQ(found["steps"][1]["step"], 2);
  EXPECT_EQ(found["steps"][1]["time"], 1.0);
  EXPECT_EQ(found["steps"][1]["variables"][0]["parts"][0]["components"][0]["minimum"], 2.0);
  EXPECT_EQ(found["steps"][2]["variables"][0]["parts"][0]["availability"], "not in this step");
  const Result text = run_fldtool({"stats", path, "--steps", "3", "--variables", "p", "-p", "whole"});
  EXPECT_NE(text.output.find("not in this step\n"), std::string::npos) << text.output;
}

TEST(Stats, WrongChoices) {
  const OneFile file(one_of_each_file());
  const auto expect = [&](const std::vector<std::string>& options, const std::string& line) {
    std::vector<std::string> arguments = {"stats", file.path()};
    arguments.insert(arguments.end(), options.begin(), options.end());
    tool_test::expect_error(arguments, 2, line);
  };
  expect({"-p", "nowhere"}, file.path() + ": there is no part 'nowhere': the parts are 1 to 5");
  expect({"--variables", "q"}, file.path() + ": there is no variable 'q': the variables are 1 to 3");
  expect({"--steps", "1"}, file.path() + ": there is no step 1: the steps are 0 to 0");
  expect({"--histogram", "0"}, "--histogram: '0' is not a number from 1 to 1000 (see fldtool stats --help)");
}

// The option takes the places of the first file's sections for the second, which is laid out in another way.
TEST(Stats, ValuesThatCannotBeRead) {
  const testkit::TemporaryDirectory directory;
  for (int cycle = 1; cycle <= 2; ++cycle) {
    testkit::File file = one_of_each_file();
    file.header.set_cycle(cycle, cycle);
    if (cycle == 2) file.region_sets.front().remove("LS_MatOfElements");
    testkit::write_file(file, directory / ("case_" + std::to_string(cycle) + ".fld"));
  }
  const std::string path = (directory / "case_1.fld").string();
  const std::string second = (directory / "case_2.fld").string();
  const std::vector<std::string> arguments = {"stats", path, "--simplify", "--variables", "p", "-p", "whole"};
  const Result text = run_fldtool(arguments);
  EXPECT_EQ(text.status, 3);
  EXPECT_EQ(text.errors, "fldtool: " + second + ": step 1: variable p: error : failed to seek fld file.\n");
  EXPECT_NE(text.output.find("failed: error : failed to seek fld file.\n"), std::string::npos) << text.output;
  std::vector<std::string> with_json = arguments;
  with_json.emplace_back("--json");
  const json found = json::parse(run_fldtool(with_json).output);
  EXPECT_EQ(found["steps"][0]["variables"][0]["parts"][0]["availability"], "given");
  const json& failed = found["steps"][1]["variables"][0]["parts"][0];
  EXPECT_EQ(failed["availability"], "failed");
  EXPECT_EQ(failed["reason"], "error : failed to seek fld file.");
  EXPECT_EQ(failed["components"], json::array());
  EXPECT_EQ(found["problems"],
            json::array({second + ": step 1: variable p: error : failed to seek fld file."}));
}

TEST(Stats, AStepThatCannotBeReadIsLeftOut) {
  const testkit::TemporaryDirectory directory;
  const std::string path = tool_test::write_series_with_a_broken_step(directory.path());
  const std::string beginning = "fldtool: " + (directory / "case_2.fld").string() + ": step 1: ";
  const std::string reason = "FAILED TO READ GEOMETRY DATA IN " + (directory / "case_2.fld").string() + ".";
  const Result result = run_fldtool({"stats", path, "--variables", "p", "-p", "whole"});
  EXPECT_EQ(result.status, 3);
  EXPECT_TRUE(result.errors.starts_with(beginning)) << result.errors;
  EXPECT_NE(result.errors.find(reason), std::string::npos) << result.errors;
  EXPECT_EQ(result.output.find("step 0 (time 1)\n"), 0U) << result.output;
  EXPECT_EQ(result.output.find("step 1"), std::string::npos) << result.output;
  EXPECT_NE(result.output.find("step 2 (time 3)\n"), std::string::npos) << result.output;
  const json found =
      json::parse(run_fldtool({"stats", path, "--json", "--variables", "p", "-p", "whole"}).output);
  ASSERT_EQ(found["steps"].size(), 2U);
  EXPECT_EQ(found["steps"][1]["step"], 2);
  EXPECT_EQ(found["steps"][1]["variables"][0]["parts"][0]["components"][0]["maximum"], 10.0);
  ASSERT_EQ(found["problems"].size(), 1U);
  EXPECT_NE(found["problems"][0].get<std::string>().find(reason), std::string::npos) << found["problems"];
  // Where the first step that is asked for cannot be read, too.
  const json behind = json::parse(run_fldtool({"stats", path, "--json", "--steps", "1-2"}).output);
  ASSERT_EQ(behind["steps"].size(), 1U);
  EXPECT_EQ(behind["steps"][0]["step"], 2);
}

TEST(Stats, AFullDisk) {
  const OneFile file(one_of_each_file());
  const Result result = run_fldtool({"stats", file.path()}, "/dev/full");
  EXPECT_EQ(result.status, 4);
  EXPECT_EQ(result.errors, "fldtool: standard output: cannot write: No space left on device\n");
}

TEST(Stats, TellsProgressOnATerminal) {
  const OneFile file(one_of_each_file());
  const Result result = tool_test::run_fldtool_on_terminal({"stats", file.path()});
  EXPECT_EQ(result.status, 0);
  EXPECT_NE(result.errors.find("stats: 0 of 15, 0 %"), std::string::npos) << result.errors;
}

TEST(Stats, StopsWhenItIsInterrupted) {
  // Several steps, each of which prints more than a pipe holds.
  const testkit::TemporaryDirectory directory;
  for (int cycle = 0; cycle < 4; ++cycle) {
    testkit::write_box_dataset(directory / ("s_" + std::to_string(cycle) + ".fld"),
                               {.nz = 10, .cycle = cycle});
  }
  const Result result = tool_test::run_fldtool_and_interrupt(
      {"stats", (directory / "s_0.fld").string(), "--histogram", "1000"}, SIGINT);
  EXPECT_EQ(result.status, 130);
  EXPECT_EQ(result.errors, "fldtool: interrupted\n");
}

}  // namespace
