// Values of variables as VTK arrays.
#include "vtk/values.h"

#include "gtest/gtest.h"
#include <cmath>
#include <string>
#include <vtkCellData.h>
#include <vtkInformation.h>
#include <vtkInformationStringKey.h>
#include <vtkPointData.h>

#include "host/error.h"
#include "testkit/file_writer.h"
#include "testkit/quantity.h"
#include "testkit/small_meshes.h"
#include "tests/host/open_file.h"
#include "vtk/part_grid.h"
#include "vtk/points.h"

namespace {

testkit::File described() {
  testkit::File file = testkit::file_of(testkit::one_tetrahedron());
  testkit::RegionSet& set = file.region_sets.front();
  set.add(testkit::scalar_section({.name = "p", .label = "Pressure [Pa]", .values = {1.5, 1e30, 3.0, -4.0}}));
  set.add(testkit::vector_section({.name = "v",
                                   .label = "Velocity",
                                   .x = {1.0, 2.0, 3.0, 4.0},
                                   .y = {5.0, 6.0, 1e30, 8.0},
                                   .z = {9.0, 10.0, 11.0, 12.0}}));
  return file;
}

class Values : public testing::Test {
 protected:
  Values() : file(described()) {}

  vtkSmartPointer<vtkDataArray> values(const std::string& name) {
    return vtkdata::make_values(file.session(), file.variable(name), file.part("ALL_ELEMENTS"), name);
  }

  host_test::OpenFile file;
};

TEST_F(Values, OfAScalarAreNotANumberWhereUndefined) {
  const auto array = values("p");
  ASSERT_EQ(array->GetNumberOfTuples(), 4);
  EXPECT_EQ(array->GetNumberOfComponents(), 1);
  EXPECT_EQ(array->GetDataType(), VTK_FLOAT);
  EXPECT_STREQ(array->GetName(), "p");
  EXPECT_EQ(array->GetTuple1(0), 1.5);
  EXPECT_TRUE(std::isnan(array->GetTuple1(1)));
  EXPECT_EQ(array->GetTuple1(2), 3.0);
  EXPECT_EQ(array->GetTuple1(3), -4.0);
}

TEST_F(Values, OfAVectorHaveThreeComponents) {
  const auto array = values("v");
  ASSERT_EQ(array->GetNumberOfTuples(), 4);
  ASSERT_EQ(array->GetNumberOfComponents(), 3);
  for (int node = 0; node < 4; ++node) {
    for (int component = 0; component < 3; ++component) {
      const double value = array->GetComponent(node, component);
      if (node == 2 && component == 1) {
        EXPECT_TRUE(std::isnan(value));
      } else {
        EXPECT_EQ(value, 1.0 + node + 4 * component);
      }
    }
  }
}

TEST_F(Values, KeepTheUnitOfTheLabel) {
  EXPECT_STREQ(values("p")->GetInformation()->Get(vtkDataArray::UNITS_LABEL()), "Pa");
  EXPECT_FALSE(values("v")->GetInformation()->Has(vtkDataArray::UNITS_LABEL()));
}

// XML cannot have control characters.
TEST(Units, HaveNoControlCharacters) {
  testkit::File file = testkit::file_of(testkit::one_tetrahedron());
  file.region_sets.front().add(testkit::scalar_section(
      {.name = "p", .label = "Pressure [k\x01\nPa]", .values = {1.0, 2.0, 3.0, 4.0}}));
  host_test::OpenFile dataset(file);
  const auto array = vtkdata::make_values(dataset.session(), 1, 1, "p");
  EXPECT_STREQ(array->GetInformation()->Get(vtkDataArray::UNITS_LABEL()), "k  Pa");
}

TEST_F(Values, PerElementBecomeCellData) {
  const int part = file.part("ALL_ELEMENTS");
  const auto grid = vtkdata::make_part_grid(file.session(), part);
  EXPECT_TRUE(vtkdata::add_values(grid, file.session(), file.variable("MatOfElements"), part, "material"));
  EXPECT_TRUE(vtkdata::add_values(grid, file.session(), file.variable("p"), part, "p"));
  ASSERT_NE(grid->GetCellData()->GetArray("material"), nullptr);
  EXPECT_EQ(grid->GetCellData()->GetArray("material")->GetTuple1(0), 1.0);
  EXPECT_EQ(grid->GetCellData()->GetNumberOfArrays(), 1);
  EXPECT_EQ(grid->GetPointData()->GetNumberOfArrays(), 1);
}

TEST_F(Values, InDoublePrecisionAreTheSame) {
  const int part = file.part("ALL_ELEMENTS");
  const auto array =
      vtkdata::make_values(file.session(), file.variable("v"), part, "v", vtkdata::Precision::double_width);
  EXPECT_EQ(array->GetDataType(), VTK_DOUBLE);
  EXPECT_EQ(array->GetComponent(3, 2), 12.0);
  const auto points =
      vtkdata::make_points(file.session().coordinates(part), vtkdata::Precision::double_width);
  EXPECT_EQ(points->GetDataType(), VTK_DOUBLE);
  EXPECT_EQ(points->GetPoint(1)[0], 1.0);
}

TEST(ValuesOfASeries, AreNoneInAStepWithoutTheQuantity) {
  const testkit::TemporaryDirectory directory;
  testkit::File file = described();
  file.header.set_cycle(1, 1.0);
  testkit::write_file(file, directory / "s_1.fld");
  file.header.set_cycle(2, 2.0);
  file.region_sets.front().remove("LS_Scalar:p");
  testkit::write_file(file, directory / "s_2.fld");
  host_test::Reader reader;
  reader.session().open(directory / "s_1.fld");
  const int p = reader.variable("p");
  EXPECT_NE(vtkdata::make_values(reader.session(), p, 1, "p"), nullptr);
  const auto grid = vtkdata::make_part_grid(reader.session(), 1);
  EXPECT_TRUE(vtkdata::add_values(grid, reader.session(), p, 1, "first"));
  reader.session().select_step(1);
  EXPECT_EQ(vtkdata::make_values(reader.session(), p, 1, "p"), nullptr);
  EXPECT_FALSE(vtkdata::add_values(grid, reader.session(), p, 1, "second"));
  EXPECT_EQ(grid->GetPointData()->GetNumberOfArrays(), 1);
}

TEST(ValuesOfABrokenFile, AreAnError) {
  const testkit::TemporaryDirectory directory;
  testkit::write_file(described(), directory / "case.fld");
  host_test::Reader reader;
  reader.session().open(directory / "case.fld");
  const int p = reader.variable("p");
  std::filesystem::resize_file(directory / "case.fld", 100);
  EXPECT_THROW(vtkdata::make_values(reader.session(), p, 1, "p"), host::Error);
}

}  // namespace
