// Derived variables: their names, and their values for fields whose derivatives are known.
#include "analysis/derived_variable.h"

#include "gtest/gtest.h"
#include <array>
#include <cmath>
#include <limits>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>
#include <vtkCellType.h>

#include "testkit/small_meshes.h"
#include "tests/host/open_file.h"
#include "vtk/part_grid.h"

namespace {

using analysis::Derivation;
using analysis::DerivedName;
using analysis::parse_derived_name;

TEST(DerivedName, HasFourForms) {
  EXPECT_EQ(parse_derived_name("grad(p)"), (DerivedName{Derivation::gradient, "p"}));
  EXPECT_EQ(parse_derived_name("vorticity(U)"), (DerivedName{Derivation::vorticity, "U"}));
  EXPECT_EQ(parse_derived_name("q(U)"), (DerivedName{Derivation::q_criterion, "U"}));
  EXPECT_EQ(parse_derived_name(" mag( wall shear (x) ) "),
            (DerivedName{Derivation::magnitude, "wall shear (x)"}));
}

TEST(DerivedName, IsNothingElse) {
  for (const char* text : {"", "p", "grad", "grad()", "grad( )", "grad(p", "grad p)", "gradient(p)", "Q(U)",
                           "(U)", "mag(U).x", "xq(U)"})
    EXPECT_EQ(parse_derived_name(text), std::nullopt) << text;
}

// Four elements, one of each shape, with values at their nodes.
class Derived : public testing::Test {
 protected:
  Derived()
      : file_(testkit::file_of(testkit::one_of_each())),
        grid_(vtkdata::make_part_grid(file_.session(), file_.part("ALL_ELEMENTS"))) {}

  // The values of f(x, y, z), an array, at the points.
  template <class Function>
  vtkSmartPointer<vtkFloatArray> at_points(Function f) const {
    auto values = vtkSmartPointer<vtkFloatArray>::New();
    std::array<double, 3> at{};
    values->SetNumberOfComponents(static_cast<int>(f(0.0, 0.0, 0.0).size()));
    for (vtkIdType i = 0; i < grid_->GetNumberOfPoints(); ++i) {
      grid_->GetPoint(i, at.data());
      const auto value = f(at[0], at[1], at[2]);
      values->InsertNextTuple(value.data());
    }
    return values;
  }

  void expect_everywhere(vtkFloatArray* values, const std::vector<double>& expected) const {
    ASSERT_EQ(values->GetNumberOfTuples(), grid_->GetNumberOfPoints());
    ASSERT_EQ(values->GetNumberOfComponents(), static_cast<int>(expected.size()));
    for (vtkIdType i = 0; i < values->GetNumberOfTuples(); ++i) {
      for (int c = 0; c < values->GetNumberOfComponents(); ++c)
        EXPECT_NEAR(static_cast<double>(values->GetTypedComponent(i, c)),
                    expected[static_cast<std::size_t>(c)], 1e-5)
            << "point " << i;
    }
  }

  host_test::OpenFile file_;
  vtkSmartPointer<vtkUnstructuredGrid> grid_;
};

TEST_F(Derived, GradientOfALinearScalar) {
  const auto p =
      at_points([](double x, double y, double z) { return std::array{5 + 2 * x - 3 * y + 4 * z}; });
  const auto gradient = analysis::derive(grid_, p, Derivation::gradient, "grad(p)");
  EXPECT_STREQ(gradient->GetName(), "grad(p)");
  expect_everywhere(gradient, {2, -3, 4});
}

TEST_F(Derived, VorticityAndQOfALinearVector) {
  const auto turn = at_points([](double x, double y, double z) {
    return std::array{-3 * y + x, 3 * x + 5 * z, 0 * z};
  });
  expect_everywhere(analysis::derive(grid_, turn, Derivation::vorticity, "w"), {-5, 0, 6});
  // Of a turn with the angular velocity 3 alone: half of (|spin|^2 - |strain|^2) is 9.
  const auto pure = at_points([](double x, double y, double) { return std::array{-3 * y, 3 * x, 7.0}; });
  expect_everywhere(analysis::derive(grid_, pure, Derivation::q_criterion, "q"), {9});
}

TEST_F(Derived, Magnitude) {
  const auto v = at_points([](double, double, double) { return std::array{2.0, -3.0, 6.0}; });
  expect_everywhere(analysis::derive(grid_, v, Derivation::magnitude, "mag(v)"), {7});
}

TEST_F(Derived, UndefinedValuesMakeTheNodesAroundThemUndefined) {
  const auto p = at_points([](double x, double, double) { return std::array{x}; });
  p->SetValue(0, std::numeric_limits<float>::quiet_NaN());
  const auto gradient = analysis::derive(grid_, p, Derivation::gradient, "g");
  // The hexahedron has the nodes 0 to 7; 8 to 10 belong to the other elements alone.
  for (vtkIdType i = 0; i < gradient->GetNumberOfTuples(); ++i)
    EXPECT_EQ(std::isnan(gradient->GetTypedComponent(i, 0)), i < 8) << "point " << i;
}

TEST_F(Derived, WrongNumberOfComponentsIsAnError) {
  const auto p = at_points([](double x, double, double) { return std::array{x}; });
  EXPECT_THROW(analysis::derive(grid_, p, Derivation::vorticity, "w"), std::invalid_argument);
  EXPECT_THROW(analysis::derive(grid_, nullptr, Derivation::gradient, "g"), std::invalid_argument);
  const auto v = at_points([](double, double, double) { return std::array{1.0, 1.0, 1.0}; });
  EXPECT_THROW(analysis::derive(grid_, v, Derivation::gradient, "g"), std::invalid_argument);
}

TEST_F(Derived, AreUndefinedAtANodeWithoutElements) {
  grid_->GetPoints()->InsertNextPoint(9, 9, 9);
  const vtkIdType alone = grid_->GetNumberOfPoints() - 1;
  const auto scalar = at_points([](double x, double, double) { return std::array<double, 1>{x}; });
  const auto vector = at_points([](double x, double y, double z) { return std::array<double, 3>{x, y, z}; });
  const auto gradient = analysis::derive(grid_, scalar, Derivation::gradient, "g");
  EXPECT_NEAR(gradient->GetComponent(0, 0), 1, 1e-6);
  for (int c = 0; c < 3; ++c) EXPECT_TRUE(std::isnan(gradient->GetComponent(alone, c)));
  const auto q = analysis::derive(grid_, vector, Derivation::q_criterion, "q");
  EXPECT_TRUE(std::isnan(q->GetComponent(alone, 0)));
  const auto length = analysis::derive(grid_, vector, Derivation::magnitude, "m");
  EXPECT_FLOAT_EQ(length->GetValue(alone), 15.588457F);  // of (9, 9, 9)
}

TEST_F(Derived, AreUndefinedAtANodeThatOnlyFacesHave) {
  const vtkIdType alone = grid_->GetPoints()->InsertNextPoint(9, 9, 9);
  const std::array<vtkIdType, 3> triangle = {0, 1, alone};
  grid_->InsertNextCell(VTK_TRIANGLE, 3, triangle.data());
  const auto scalar = at_points([](double x, double, double) { return std::array<double, 1>{x}; });
  const auto gradient = analysis::derive(grid_, scalar, Derivation::gradient, "g");
  EXPECT_NEAR(gradient->GetComponent(0, 0), 1, 1e-6);
  EXPECT_NEAR(gradient->GetComponent(1, 0), 1, 1e-6);
  for (int c = 0; c < 3; ++c) EXPECT_TRUE(std::isnan(gradient->GetComponent(alone, c)));
}

}  // namespace
