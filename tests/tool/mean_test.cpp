// fldtool mean: means over steps, on meshes at rest and moved rigidly.
#include <cmath>
#include <filesystem>
#include <string>
#include <vector>
#include <vtkDataArray.h>
#include <vtkPointData.h>

#include "samples/tank.h"
#include "testkit/file_writer.h"
#include "testkit/motion.h"
#include "testkit/quantity.h"
#include "testkit/small_meshes.h"
#include "testkit/temporary_directory.h"
#include "tests/tool/converted_series.h"
#include "tests/tool/run_fldtool.h"

namespace {

using tool_test::Composite;
using tool_test::Result;
using tool_test::run_fldtool;

class Mean : public testing::Test {
 protected:
  // Steps of a tetrahedron at which the four nodes have these values of p.
  std::string write_steps(const std::vector<std::vector<double>>& steps) const {
    for (std::size_t step = 0; step < steps.size(); ++step) {
      testkit::File file = testkit::file_of(testkit::one_tetrahedron());
      file.header.set_cycle(static_cast<int>(step), static_cast<double>(step));
      file.region_sets.front().add(
          testkit::scalar_section({.name = "p", .label = "Pressure [Pa]", .values = steps[step]}));
      testkit::write_file(file, directory / ("s_" + std::to_string(step) + ".fld"));
    }
    return (directory / "s_0.fld").string();
  }

  Composite mean(const std::string& file, std::vector<std::string> options = {}) const {
    const std::string collection = (directory / "mean.pvd").string();
    options.insert(options.begin(), {"mean", file, collection});
    const Result result = run_fldtool(options);
    EXPECT_EQ(result.status, 0) << result.errors;
    EXPECT_EQ(result.output, collection + "\n");
    EXPECT_EQ(tool_test::steps_of(collection).size(), 1U);
    return Composite(tool_test::steps_of(collection).front().file);
  }

  testkit::TemporaryDirectory directory;
};

double value(const Composite& composite, const char* part, const char* name, vtkIdType node) {
  vtkDataArray* array = composite.part(part)->GetPointData()->GetArray(name);
  return array == nullptr ? std::nan("") : array->GetComponent(node, 0);
}

TEST_F(Mean, OfAScalar) {
  constexpr double kUndefined = tool_test::kUndefinedValue;
  const Composite found =
      mean(write_steps({{1, 5, kUndefined, 0}, {2, 5, 7, 0}, {6, 5, kUndefined, 0}}), {"--variable", "p"});
  EXPECT_EQ(found.places(), (tool_test::Names{"Surfaces/wall", "Volumes/fluid"}));
  for (const char* part : {"wall", "fluid"}) {
    EXPECT_FLOAT_EQ(static_cast<float>(value(found, part, "p mean", 0)), 3);
    EXPECT_FLOAT_EQ(static_cast<float>(value(found, part, "p rms", 0)), std::sqrt(41.0F / 3));
    EXPECT_FLOAT_EQ(static_cast<float>(value(found, part, "p deviation", 0)), std::sqrt(14.0F / 3));
    EXPECT_EQ(value(found, part, "p minimum", 0), 1);
    EXPECT_EQ(value(found, part, "p maximum", 0), 6);
    EXPECT_EQ(value(found, part, "p mean", 2), 7);
    EXPECT_EQ(value(found, part, "p steps", 0), 3);
    EXPECT_EQ(value(found, part, "p steps", 2), 1);
  }
  EXPECT_EQ(found.part("fluid")->GetPointData()->GetNumberOfArrays(), 6);
}

TEST_F(Mean, OfSomeSteps) {
  const Composite found = mean(write_steps({{1, 1, 1, 1}, {2, 2, 2, 2}, {5, 5, 5, 5}}),
                               {"--variable", "p", "--steps", "1-2", "-p", "fluid", "--precision", "double"});
  EXPECT_EQ(value(found, "fluid", "p mean", 3), 3.5);
  EXPECT_EQ(found.part("fluid")->GetPointData()->GetNumberOfArrays(), 5);
  EXPECT_EQ(found.part("fluid")->GetPointData()->GetArray(0)->GetDataType(), VTK_DOUBLE);
}

// The blades turn; their mean is written where they are at first.
TEST_F(Mean, OnPartsThatTurn) {
  const std::string file = samples::tank::write(directory.path()).file.string();
  const Composite found =
      mean(file, {"-p", "blade_1,impeller_zone", "--variables", "Pressure,Velocity", "--steps", "0-2"});
  ASSERT_EQ(found.size(), 2U);
  vtkDataArray* velocity = found.part("blade_1")->GetPointData()->GetArray("Velocity mean");
  ASSERT_NE(velocity, nullptr);
  EXPECT_EQ(velocity->GetNumberOfComponents(), 3);
  // The node whose place turns with the blade.
  std::array<double, 3> at{};
  found.part("blade_1")->GetPoint(7, at.data());
  double sum = 0;
  for (int step = 0; step < 3; ++step) {
    const double time = samples::tank::time_of_step(step);
    const double c = std::cos(samples::tank::angle(time));
    const double s = std::sin(samples::tank::angle(time));
    sum += samples::tank::velocity(c * at[0] - s * at[1], s * at[0] + c * at[1], at[2], time)[0];
  }
  EXPECT_NEAR(velocity->GetComponent(7, 0), sum / 3, 1e-5);
}

// The impeller turns in the tank: the whole mesh and the surface of both its sides are deformed.
TEST_F(Mean, DeformedPartsAreRefusedAndTheOthersNamed) {
  const std::string file = samples::tank::write(directory.path()).file.string();
  const std::string collection = (directory / "mean.pvd").string();
  const Result result =
      run_fldtool({"mean", file, collection, "--variable", "1", "--steps", "0-1", "--parts", "all"});
  EXPECT_EQ(result.status, 4);
  EXPECT_EQ(
      result.errors,
      "fldtool: " + file +
          ": step 1: a mean needs parts at rest or moved rigidly: @sliding is deformed, ALL_ELEMENTS is "
          "deformed; choose the others with --parts 1-16,18-19\n");
  EXPECT_FALSE(std::filesystem::exists(collection));
  mean(file, {"--variable", "1", "--steps", "0-1", "--parts", "1-16,18-19"});
}

TEST_F(Mean, APartThatAStepLacksIsRefused) {
  const std::string file = tool_test::write_series_that_loses_a_part(directory.path());
  const Result result = run_fldtool({"mean", file, (directory / "mean.pvd").string(), "-p", "lower"});
  EXPECT_EQ(result.status, 4);
  EXPECT_EQ(result.errors,
            "fldtool: " + file + ": step 1: a mean needs parts at rest or moved rigidly: lower is missing\n");
}

TEST_F(Mean, AStepThatCannotBeReadEndsIt) {
  const std::string file = tool_test::write_series_with_a_broken_step(directory.path());
  const Result result = run_fldtool({"mean", file, (directory / "mean.pvd").string()});
  EXPECT_EQ(result.status, 3);
  EXPECT_NE(result.errors.find("case_2.fld: step 1: "), std::string::npos) << result.errors;
  EXPECT_FALSE(std::filesystem::exists(directory / "mean.pvd"));
}

TEST_F(Mean, WrongArgumentsAreExplained) {
  const std::string file = write_steps({{1, 2, 3, 4}});
  const Result output = run_fldtool({"mean", file, "x.txt"});
  EXPECT_EQ(output.status, 2);
  EXPECT_EQ(output.errors,
            "fldtool: x.txt: cannot write '.txt' files: OUT is NAME.pvd, or a folder (NAME/)\n");
}

}  // namespace
