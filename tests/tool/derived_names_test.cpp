// Derived names in commands that take variables: grad(NAME), vorticity(NAME), q(NAME), mag(NAME).
#include <string>
#include <vector>
#include <vtkDataArray.h>
#include <vtkPointData.h>

#include "nlohmann/json.hpp"
#include "tests/tool/converted_series.h"
#include "tests/tool/run_fldtool.h"

namespace {

using nlohmann::json;
using tool_test::Result;
using tool_test::run_fldtool;

using DerivedNames = tool_test::ConvertTest;

json components_of(const std::string& path, const std::string& variable) {
  const Result result = run_fldtool({"stats", "--json", path, "-p", "whole", "--variable", variable});
  EXPECT_EQ(result.status, 0) << result.errors;
  return json::parse(result.output)["steps"][0]["variables"][0]["parts"][0]["components"];
}

// The vector v is the position of the node.
TEST_F(DerivedNames, InStatistics) {
  const json gradient = components_of(dataset.path(), "grad(v.y)");
  ASSERT_EQ(gradient.size(), 4U);
  EXPECT_NEAR(gradient[0]["maximum"].get<double>(), 0, 1e-6);
  EXPECT_NEAR(gradient[1]["minimum"].get<double>(), 1, 1e-6);
  EXPECT_NEAR(gradient[1]["maximum"].get<double>(), 1, 1e-6);
  EXPECT_EQ(components_of(dataset.path(), "grad(v.y).z").size(), 1U);
  const json length = components_of(dataset.path(), "mag(v)");
  ASSERT_EQ(length.size(), 1U);
  EXPECT_FLOAT_EQ(length[0]["maximum"].get<float>(), 2.291288F);  // of (2, 0.5, 1)
  EXPECT_EQ(length[0]["minimum"], 0.0);                           // of (0, 0, 0)
  EXPECT_EQ(length[0]["undefined"], 0);
  EXPECT_NEAR(components_of(dataset.path(), "vorticity(v)")[3]["maximum"].get<double>(), 0, 1e-6);
  EXPECT_NEAR(components_of(dataset.path(), "q( v )")[0]["mean"].get<double>(), -1.5, 1e-5);
}

// p is undefined at node 0, which is one of the cube's.
TEST_F(DerivedNames, AreUndefinedAroundUndefinedValues) {
  EXPECT_EQ(components_of(dataset.path(), "grad(p)")[0]["undefined"], 8);
}

TEST_F(DerivedNames, InConvertedFiles) {
  const tool_test::Composite step = first_step({"--variables", "p,grad(v.x),mag(v)"});
  vtkPointData* data = step.part("lower")->GetPointData();
  ASSERT_EQ(data->GetNumberOfArrays(), 3);
  vtkDataArray* gradient = data->GetArray("grad(v.x)");
  ASSERT_NE(gradient, nullptr);
  EXPECT_EQ(gradient->GetNumberOfComponents(), 3);
  EXPECT_NEAR(gradient->GetComponent(0, 0), 1, 1e-6);
  EXPECT_NE(data->GetArray("mag(v)"), nullptr);
}

TEST_F(DerivedNames, AloneLeaveTheOthersOut) {
  const tool_test::Composite step = first_step({"--variables", "mag(v)", "--precision", "double"});
  EXPECT_EQ(step.part("lower")->GetPointData()->GetNumberOfArrays(), 1);
  EXPECT_EQ(step.part("lower")->GetPointData()->GetArray(0)->GetDataType(), VTK_DOUBLE);
}

TEST_F(DerivedNames, WrongOnesAreExplained) {
  const auto expect = [&](const std::string& variable, const std::string& reason) {
    const Result result = run_fldtool({"stats", dataset.path(), "--variable", variable});
    EXPECT_EQ(result.status, 2);
    EXPECT_EQ(result.errors, "fldtool: " + dataset.path() + ": " + reason + "\n");
  };
  expect("vorticity(p)", "vorticity(p): vorticity needs a vector, and p is a scalar");
  expect("mag(v.x)", "mag(v.x): mag needs a vector, and v.x is a component");
  expect("grad(v)", "grad(v): grad needs a scalar: v.x, v.y or v.z");
  expect("grad(MatOfElements)", "grad(MatOfElements): MatOfElements is not given per node");
  expect("grad(pp)", "there is no variable 'pp': the variables are 1 to 3; did you mean 'p'?");
  expect("mag(v).x", "mag(v).x: only vectors have components");
  const Result converted =
      run_fldtool({"convert", dataset.path(), collection.string(), "--variable", "grad(p).x"});
  EXPECT_EQ(converted.status, 2);
  EXPECT_EQ(converted.errors,
            "fldtool: " + dataset.path() + ": grad(p).x: only whole variables can be chosen here\n");
}

}  // namespace
