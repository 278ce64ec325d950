// fldtool extract: what convert writes, cut down to a box.
#include <array>
#include <filesystem>
#include <string>
#include <vector>
#include <vtkCellData.h>
#include <vtkPointData.h>

#include "testkit/box_dataset.h"
#include "tests/tool/converted_series.h"
#include "tests/tool/run_fldtool.h"

namespace {

using tool_test::Composite;
using tool_test::Result;
using tool_test::run_fldtool;

class Extract : public tool_test::ConvertTest {
 protected:
  Composite extracted(std::vector<std::string> options) const {
    options.insert(options.begin(), {"extract", dataset.path(), collection.string()});
    const Result result = run_fldtool(options);
    EXPECT_EQ(result.status, 0) << result.errors;
    EXPECT_EQ(result.output, collection.string() + "\n");
    return Composite(tool_test::steps_of(collection).front().file);
  }
};

// The edge of the prism at x = 2, which the prism and the tetrahedron have.
TEST_F(Extract, ElementsWithANodeInTheBox) {
  const Composite step = extracted({"--box", "3,1,0.5:1.5,0,-1", "-p", "volumes"});
  EXPECT_EQ(step.places(), (tool_test::Names{"Volumes/lower"}));
  vtkUnstructuredGrid* lower = step.part("lower");
  ASSERT_EQ(lower->GetNumberOfCells(), 1);
  EXPECT_EQ(lower->GetCellType(0), VTK_WEDGE);
  ASSERT_EQ(lower->GetNumberOfPoints(), 6);
  // Values go with their nodes: the vector v is the position.
  vtkDataArray* v = lower->GetPointData()->GetArray("v");
  ASSERT_NE(v, nullptr);
  for (vtkIdType i = 0; i < 6; ++i) {
    std::array<double, 3> point{};
    lower->GetPoint(i, point.data());
    for (int axis = 0; axis < 3; ++axis)
      EXPECT_EQ(v->GetComponent(i, axis), point[static_cast<std::size_t>(axis)]);
  }
  EXPECT_EQ(lower->GetCellData()->GetArray("MatOfElements")->GetNumberOfTuples(), 1);
}

TEST_F(Extract, OfAllElementsIsWhatConvertWrites) {
  const Composite all = extracted({"--box", "-9,-9,-9:9,9,9"});
  EXPECT_EQ(all.size(), 4U);
  EXPECT_EQ(all.part("lower")->GetNumberOfCells(), 2);
  const Composite without_box = extracted({"-p", "upper", "--variables", "mag(v)"});
  EXPECT_EQ(without_box.size(), 1U);
  EXPECT_EQ(without_box.part("upper")->GetPointData()->GetNumberOfArrays(), 1);
}

TEST_F(Extract, ABoxWithoutElementsIsAnError) {
  const Result result = run_fldtool({"extract", dataset.path(), collection.string(), "--box", "5,5,5:6,6,6"});
  EXPECT_EQ(result.status, 2);
  EXPECT_EQ(result.errors,
            "fldtool: " + dataset.path() + ": no element of the parts is in the box 5,5,5:6,6,6\n");
  EXPECT_EQ(result.output, "");
  EXPECT_FALSE(std::filesystem::exists(collection));
}

TEST_F(Extract, ABoxWithoutElementsLeavesAnEarlierSeriesAlone) {
  extracted({"-p", "upper"});
  const Result result = run_fldtool({"extract", dataset.path(), collection.string(), "--box", "5,5,5:6,6,6"});
  EXPECT_EQ(result.status, 2);
  EXPECT_EQ(Composite(tool_test::steps_of(collection).front().file).size(), 1U);
}

// The mesh of the second file reaches further along x.
TEST_F(Extract, StepsBeforeTheFirstElementInTheBoxHaveNoParts) {
  const std::filesystem::path first = dataset.directory() / "growing_0.fld";
  testkit::write_box_dataset(first, {.nx = 2, .cycle = 0, .time = 0.5});
  testkit::write_box_dataset(dataset.directory() / "growing_1.fld",
                             {.nx = 2, .lengths = {4.0, 1.0, 1.0}, .cycle = 1, .time = 1.5});
  const Result result = run_fldtool(
      {"extract", first.string(), collection.string(), "-p", "whole", "--box", "3,0,0:5,1,1", "--jobs", "1"});
  EXPECT_EQ(result.status, 0) << result.errors;
  const std::vector<tool_test::CollectionStep> steps = tool_test::steps_of(collection);
  ASSERT_EQ(steps.size(), 2U);
  EXPECT_EQ(steps[0].time, "0.5");
  EXPECT_EQ(Composite(steps[0].file).size(), 0U);
  EXPECT_EQ(steps[1].time, "1.5");
  ASSERT_EQ(Composite(steps[1].file).size(), 1U);
  EXPECT_EQ(Composite(steps[1].file).part("ALL_ELEMENTS")->GetNumberOfCells(), 1);
}

TEST_F(Extract, OneFileHasNoBox) {
  const std::string file = (dataset.directory() / "out.vtkhdf").string();
  const Result boxed = run_fldtool({"extract", dataset.path(), file, "--box", "0,0,0:1,1,1"});
  if (boxed.errors.find("built without HDF5") != std::string::npos) GTEST_SKIP() << boxed.errors;
  EXPECT_EQ(boxed.status, 2);
  EXPECT_EQ(boxed.errors, "fldtool: --box: a .vtkhdf file has all elements\n");
}

TEST_F(Extract, WrongBoxesAreExplained) {
  for (const char* box : {"1,2,3", "1,2,3:4,5", "a,b,c:d,e,f", "1,2,3:4,5,6:7,8,9"}) {
    const Result result = run_fldtool({"extract", dataset.path(), collection.string(), "--box", box});
    EXPECT_EQ(result.status, 2);
    EXPECT_EQ(result.errors,
              "fldtool: --box: '" + std::string(box) + "' is not two points: write X,Y,Z:X,Y,Z\n");
  }
}

}  // namespace
