// fldtool integrate: areas, volumes, integrals, flow rates and forces, on good, broken and empty input.
#include "gtest/gtest.h"
#include <algorithm>
#include <cmath>
#include <string>
#include <utility>
#include <vector>

#include "nlohmann/json.hpp"
#include "samples/channel.h"
#include "samples/sector.h"
#include "samples/tank.h"
#include "testkit/file_writer.h"
#include "testkit/quantity.h"
#include "testkit/small_meshes.h"
#include "testkit/temporary_directory.h"
#include "tests/tool/json_schema.h"
#include "tests/tool/run_fldtool.h"
#include "tests/tool/tool_datasets.h"

namespace {

using nlohmann::json;
using tool_test::kUndefinedValue;
using tool_test::one_of_each_file;
using tool_test::OneFile;
using tool_test::Result;
using tool_test::run_fldtool;

json integrals(const std::string& path, std::vector<std::string> options = {}) {
  return tool_test::checked_json("integrate", path, std::move(options));
}

// The cube, prism, pyramid and tetrahedron with p = 2 + z, v the position, and no undefined value.
testkit::File file_with_rising_pressure() {
  const testkit::Mesh mesh = testkit::one_of_each();
  testkit::File file = testkit::file_of(mesh);
  testkit::RegionSet& set = file.region_sets.front();
  set.add(testkit::scalar_section(
      {.name = "p",
       .label = "Pressure [Pa]",
       .values = testkit::at_nodes(mesh.nodes, [](double, double, double z) { return 2 + z; })}));
  set.add(testkit::vector_section({.name = "v", .x = mesh.nodes.x, .y = mesh.nodes.y, .z = mesh.nodes.z}));
  return file;
}

TEST(Integrate, VolumesSurfacesAndForces) {
  const OneFile file(file_with_rising_pressure());
  const json found = integrals(file.path());
  EXPECT_EQ(found["file"], file.path());
  EXPECT_EQ(found["problems"], json::array());
  ASSERT_EQ(found["steps"].size(), 1U);
  const json& parts = found["steps"][0]["parts"];
  ASSERT_EQ(parts.size(), 4U);
  const json& outside = parts[0];
  EXPECT_EQ(outside["name"], "outside");
  EXPECT_EQ(outside["elements"], 12);
  EXPECT_FALSE(outside.contains("volume"));
  EXPECT_EQ(outside["faces"], (json{{"turned", 0}, {"inside", 0}, {"without_element", 0}}));
  // The divergence of the position is 3, the volume 2, the gradient of the pressure (0, 0, 1).
  const json& v = outside["variables"][1];
  ASSERT_EQ(v["components"].size(), 5U);
  EXPECT_EQ(v["components"][4]["component"], "normal");
  EXPECT_NEAR(v["components"][4]["integral"].get<double>(), 6, 1e-12);
  EXPECT_NEAR(outside["force"]["force"][2].get<double>(), 2, 1e-12);
  EXPECT_NEAR(outside["force"]["force"][0].get<double>(), 0, 1e-12);
  EXPECT_EQ(outside["force"]["pressure"], "p");

  const json& between = parts[1];
  EXPECT_DOUBLE_EQ(between["area"].get<double>(), 1);
  EXPECT_EQ(between["faces"]["inside"], 1);
  EXPECT_EQ(between["vector_area"], json({1.0, 0.0, 0.0}));
  EXPECT_EQ(between["force"]["force"], json({2.5, 0.0, 0.0}));

  const json& lower = parts[2];
  EXPECT_DOUBLE_EQ(lower["volume"].get<double>(), 1.5);
  EXPECT_FALSE(lower.contains("force"));
  const json& p = lower["variables"][0]["components"][0];
  EXPECT_DOUBLE_EQ(p["integral"].get<double>(), 3.75);
  EXPECT_DOUBLE_EQ(p["mean"].get<double>(), 2.5);
  EXPECT_DOUBLE_EQ(p["measure"].get<double>(), 1.5);
  const json& materials = lower["variables"][2];
  EXPECT_EQ(materials["per"], "element");
  EXPECT_DOUBLE_EQ(materials["components"][0]["mean"].get<double>(), 1);
}

TEST(Integrate, ReferencePressureAndPointOfMoments) {
  const OneFile file(file_with_rising_pressure());
  const json force = integrals(file.path(), {"-p", "@between", "--reference-pressure", "0.5", "--about",
                                             "1,0,0"})["steps"][0]["parts"][0]["force"];
  EXPECT_EQ(force["reference_pressure"], 0.5);
  EXPECT_EQ(force["force"], json({2.0, 0.0, 0.0}));
  // The mean of (1.5 + z) z over the height 0 to 1 is 3/4 + 1/3; the arm along y is 1/2.
  EXPECT_NEAR(force["moment"][1].get<double>(), 0.75 + 1.0 / 3, 1e-12);
  EXPECT_NEAR(force["moment"][2].get<double>(), -1, 1e-12);
  EXPECT_EQ(force["about"], json({1.0, 0.0, 0.0}));
}

TEST(Integrate, UndefinedValuesAreLeftOutAndCounted) {
  const OneFile file(one_of_each_file());  // p is undefined at a corner of the cube
  const json found = integrals(file.path(), {"-p", "lower", "--variables", "p,v.x"});
  const json& p = found["steps"][0]["parts"][0]["variables"][0]["components"][0];
  EXPECT_EQ(p["undefined"], 1);
  EXPECT_EQ(p["left_out"], 1);
  EXPECT_DOUBLE_EQ(p["measure"].get<double>(), 0.5);
  EXPECT_DOUBLE_EQ(found["steps"][0]["parts"][0]["volume"].get<double>(), 1.5);
  const json& v = found["steps"][0]["parts"][0]["variables"][1]["components"];
  ASSERT_EQ(v.size(), 1U);
  EXPECT_EQ(v[0]["component"], "x");
}

TEST(Integrate, WhatIsUndefinedEverywhereHasNoMean) {
  testkit::File described = testkit::file_of(testkit::one_tetrahedron());
  described.region_sets.front().add(
      testkit::scalar_section({.name = "p", .values = std::vector<double>(4, kUndefinedValue)}));
  const OneFile file(described);
  const json p = integrals(file.path(), {"-p", "wall", "--variables", "p"})["steps"][0]["parts"][0];
  EXPECT_EQ(p["variables"][0]["components"][0]["mean"], nullptr);
  EXPECT_EQ(p["variables"][0]["components"][0]["integral"], 0.0);
  EXPECT_EQ(p["force"]["left_out"], 4);
  const Result text = run_fldtool({"integrate", file.path(), "-p", "wall", "--variables", "p"});
  EXPECT_NE(text.output.find("; 4 elements left out\n"), std::string::npos) << text.output;
}

TEST(Integrate, AStepWithoutPressureHasNoForce) {
  const testkit::TemporaryDirectory directory;
  testkit::File file = file_with_rising_pressure();
  testkit::write_file(file, directory / "s_0.fld");
  file.header.set_cycle(1, 1.0);
  file.region_sets.front().remove("LS_Scalar:p");
  testkit::write_file(file, directory / "s_1.fld");
  const json steps = integrals((directory / "s_0.fld").string(),
                               {"-p", "@between", "--pressure", "p", "--steps", "0-1"})["steps"];
  ASSERT_EQ(steps.size(), 2U);
  EXPECT_EQ(steps[0]["parts"][0]["force"]["force"], json({2.5, 0.0, 0.0}));
  EXPECT_FALSE(steps[1]["parts"][0].contains("force"));
}

TEST(Integrate, Text) {
  const OneFile file(file_with_rising_pressure());
  const Result result = run_fldtool({"integrate", file.path(), "-p", "@between,upper", "--variables", "p,v"});
  EXPECT_EQ(result.status, 0) << result.errors;
  EXPECT_EQ(
      result.output,
      "step 0 (time 0)\n"
      "  part 2, surface @between: area 1, 1 elements; mean normal (1, 0, 0), 1 faces inside the volume\n"
      "    variable              of               integral           mean           area  undefined  left "
      "out\n"
      "    p                                           2.5            2.5              1          0         "
      "0\n"
      "    v                     x                       1              1              1          0         "
      "0\n"
      "                          y                     0.5            0.5              1          0         "
      "0\n"
      "                          z                     0.5            0.5              1          0         "
      "0\n"
      "                          magnitude         1.38209        1.38209              1          0         "
      "0\n"
      "                          normal                  1              1              1          0         "
      "0\n"
      "    force of p: (2.5, 0, 0), moment about (0, 0, 0): (0, 1.33333, -1.25)\n"
      "  part 4, volume upper: volume 0.5, 2 elements\n"
      "    variable              of               integral           mean         volume  undefined  left "
      "out\n"
      "    p                                         1.625           3.25            0.5          0         "
      "0\n"
      "    v                     x                0.354167       0.708333            0.5          0         "
      "0\n"
      "                          y                    0.25            0.5            0.5          0         "
      "0\n"
      "                          z                   0.625           1.25            0.5          0         "
      "0\n"
      "                          magnitude        0.841267        1.68253            0.5          0         "
      "0\n");
}

TEST(Integrate, CommaSeparated) {
  const OneFile file(file_with_rising_pressure());
  const Result result =
      run_fldtool({"integrate", file.path(), "--csv", "-p", "@between", "--variables", "p"});
  EXPECT_EQ(result.status, 0) << result.errors;
  EXPECT_EQ(
      result.output,
      "step,time,part,kind,name,elements,measure,variable,component,integral,mean,with_values,undefined,"
      "left_out\n"
      "0,0,2,surface,@between,1,1,,area_x,1,,,,\n"
      "0,0,2,surface,@between,1,1,,area_y,0,,,,\n"
      "0,0,2,surface,@between,1,1,,area_z,0,,,,\n"
      "0,0,2,surface,@between,1,1,p,,2.5,2.5,1,0,0\n"
      "0,0,2,surface,@between,1,1,p,force_x,2.5,,1,0,0\n"
      "0,0,2,surface,@between,1,1,p,force_y,0,,1,0,0\n"
      "0,0,2,surface,@between,1,1,p,force_z,0,,1,0,0\n"
      "0,0,2,surface,@between,1,1,p,moment_x,0,,1,0,0\n"
      "0,0,2,surface,@between,1,1,p,moment_y,1.3333333333333333,,1,0,0\n"
      "0,0,2,surface,@between,1,1,p,moment_z,-1.25,,1,0,0\n");
}

TEST(Integrate, TheWholeMeshOfACylindricalSetIsTakenAtItsPlaces) {
  const testkit::TemporaryDirectory directory;
  const std::string file = samples::sector::write(directory.path()).file.string();
  const json parts =
      integrals(file, {"-p", "volumes,whole", "--variables", "Temperature"})["steps"][0]["parts"];
  ASSERT_EQ(parts.size(), 3U);
  EXPECT_NEAR(parts[0]["volume"].get<double>() + parts[1]["volume"].get<double>(),
              parts[2]["volume"].get<double>(), 1e-9);
}

TEST(Integrate, TurnedBladesHaveTheSameAreaAtAllSteps) {
  const testkit::TemporaryDirectory directory;
  const std::string file = samples::tank::write(directory.path()).file.string();
  const std::vector<std::string> options = {"-p", "blade_2,disc", "--variables", "Temperature"};
  const json found = integrals(file, options);
  ASSERT_EQ(found["steps"].size(), 8U);
  for (const json& step : found["steps"]) {
    for (std::size_t i = 0; i < 2; ++i) {
      const double first = found["steps"][0]["parts"][i]["area"].get<double>();
      EXPECT_NEAR(step["parts"][i]["area"].get<double>(), first, 2e-6 * first);
      EXPECT_EQ(step["parts"][i]["faces"], found["steps"][0]["parts"][i]["faces"]);
    }
  }
  std::vector<std::string> one = options;
  one.insert(one.end(), {"--jobs", "1"});
  EXPECT_EQ(integrals(file, one), found);
}

TEST(Integrate, WrongArgumentsAreExplained) {
  const OneFile file(file_with_rising_pressure());
  const auto expect_error = [&](const std::vector<std::string>& options, const std::string& message) {
    std::vector<std::string> arguments = {"integrate", file.path()};
    arguments.insert(arguments.end(), options.begin(), options.end());
    tool_test::expect_error(arguments, 2, message);
  };
  expect_error({"--about", "1,2"}, "--about: '1,2' is not a point: write X,Y,Z");
  expect_error({"--about", "1,2,nan"}, "--about: '1,2,nan' is not a point: write X,Y,Z");
  expect_error({"--about", "1,2,3,4"}, "--about: '1,2,3,4' is not a point: write X,Y,Z");
  expect_error({"--reference-pressure", "1 bar"}, "--reference-pressure: '1 bar' is not a number");
  expect_error({"--pressure", "v"}, file.path() + ": --pressure: 'v' is not a scalar");
  expect_error({"--pressure", "q"}, file.path() + ": there is no variable 'q': the variables are 1 to 3");
}

TEST(Integrate, PressureMayBeNoneOrAnother) {
  const OneFile file(file_with_rising_pressure());
  EXPECT_FALSE(
      integrals(file.path(), {"-p", "outside", "--pressure", "none"})["steps"][0]["parts"][0].contains(
          "force"));
  EXPECT_EQ(integrals(file.path(),
                      {"-p", "outside", "--pressure", "v.z"})["steps"][0]["parts"][0]["force"]["pressure"],
            "v");
}

TEST(Integrate, AStepThatCannotBeReadIsLeftOut) {
  const testkit::TemporaryDirectory directory;
  const std::string path = tool_test::write_series_with_a_broken_step(directory.path());
  const Result result = run_fldtool({"integrate", "--json", path, "-p", "upper,@between"});
  EXPECT_EQ(result.status, 3);
  const json found = json::parse(result.output);
  EXPECT_EQ(tool_test::schema_complaints("integrate.schema.json", found), "");
  ASSERT_EQ(found["steps"].size(), 2U);
  EXPECT_EQ(found["steps"][1]["step"], 2);
  EXPECT_EQ(found["steps"][1]["parts"], found["steps"][0]["parts"]);
  ASSERT_EQ(found["problems"].size(), 1U);
  EXPECT_EQ(result.errors, "fldtool: " + found["problems"][0].get<std::string>() + "\n");
  EXPECT_EQ(run_fldtool({"integrate", "--json", path, "-p", "upper,@between", "--jobs", "1"}).output,
            result.output);
}

TEST(Integrate, FacesOfATetrahedron) {
  const OneFile file(testkit::file_of(testkit::one_tetrahedron()));
  const json found = integrals(file.path(), {"-p", "wall"});
  EXPECT_EQ(found["steps"][0]["parts"][0]["faces"]["without_element"], 0);
  EXPECT_NEAR(found["steps"][0]["parts"][0]["area"].get<double>(), 1.5 + std::sqrt(3.0) / 2, 1e-12);
}

}  // namespace
