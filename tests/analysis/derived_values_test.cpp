// Derived variables on the parts of datasets, also where the whole mesh is in cylindrical coordinates.
#include "analysis/derived_values.h"

#include "gtest/gtest.h"
#include <cmath>
#include <string>
#include <utility>

#include "samples/sector.h"
#include "testkit/file_writer.h"
#include "testkit/quantity.h"
#include "testkit/small_meshes.h"
#include "tests/analysis/part_mesh.h"

namespace {

using analysis::Derivation;
using analysis::DerivedValues;
using analysis_test::is_never_cylindrical;

void expect_all(vtkFloatArray* values, int tuples, const std::vector<double>& expected, double tolerance) {
  ASSERT_NE(values, nullptr);
  ASSERT_EQ(values->GetNumberOfTuples(), tuples);
  ASSERT_EQ(values->GetNumberOfComponents(), static_cast<int>(expected.size()));
  for (vtkIdType i = 0; i < tuples; ++i) {
    for (int c = 0; c < values->GetNumberOfComponents(); ++c) {
      EXPECT_NEAR(static_cast<double>(values->GetTypedComponent(i, c)), expected[static_cast<std::size_t>(c)],
                  tolerance)
          << "node " << i;
    }
  }
}

TEST(DerivedValues, SurfacesHaveThoseOfTheVolume) {
  const testkit::Mesh mesh = testkit::one_of_each();
  testkit::File described = testkit::file_of(mesh);
  described.region_sets.front().add(testkit::scalar_section(
      {.name = "p", .values = testkit::at_nodes(mesh.nodes, [](double x, double y, double z) {
                      return 1 + 2 * x + 3 * y - z;
                    })}));
  host_test::OpenFile file(described);
  DerivedValues derived(file.session(), is_never_cylindrical);
  for (const host::Part& part : file.session().parts()) {
    const auto found = derived.on_part({Derivation::gradient, file.variable("p"), 0, "grad(p)"}, part.number);
    expect_all(found, part.nodes, {2, 3, -1}, 1e-5);
  }
}

TEST(DerivedValues, ComponentsAndLengthsOfVectors) {
  const testkit::Mesh mesh = testkit::one_of_each();
  testkit::File described = testkit::file_of(mesh);
  const auto values = [&](double a, double b) {
    return testkit::at_nodes(mesh.nodes, [=](double x, double y, double) { return a * x + b * y; });
  };
  described.region_sets.front().add(
      testkit::vector_section({.name = "v", .x = values(1, 4), .y = values(-4, 2), .z = values(0, 0)}));
  host_test::OpenFile file(described);
  DerivedValues derived(file.session(), is_never_cylindrical);
  const int v = file.variable("v");
  for (const host::Part& part : file.session().parts()) {
    expect_all(derived.on_part({Derivation::gradient, v, 1, "grad(v.y)"}, part.number), part.nodes,
               {-4, 2, 0}, 1e-5);
    expect_all(derived.on_part({Derivation::vorticity, v, 0, "vorticity(v)"}, part.number), part.nodes,
               {0, 0, -8}, 1e-5);
  }
  const int upper = file.part("upper");
  const auto lengths = derived.on_part({Derivation::magnitude, v, 0, "mag(v)"}, upper);
  const host::Coordinates nodes = file.session().coordinates(upper);
  ASSERT_EQ(lengths->GetNumberOfTuples(), 6);
  for (int i = 0; i < 6; ++i) {
    const auto k = static_cast<std::size_t>(i);
    const auto x = static_cast<double>(nodes.x()[k]);
    const auto y = static_cast<double>(nodes.y()[k]);
    EXPECT_NEAR(static_cast<double>(lengths->GetValue(i)), std::hypot(x + 4 * y, 2 * y - 4 * x), 1e-6);
  }
}

TEST(DerivedValues, AreOfCartesianPlacesInACylindricalMesh) {
  const testkit::Mesh mesh = samples::sector::mesh();
  testkit::File described = testkit::file_of(mesh);
  described.region_sets.front().add(testkit::scalar_section(
      {.name = "p", .values = testkit::at_nodes(mesh.nodes, [](double radius, double angle, double z) {
                      return 2 * radius * std::cos(angle) - 3 * radius * std::sin(angle) + 4 * z;
                    })}));
  host_test::OpenFile file(described);
  DerivedValues derived(file.session(), analysis_test::is_whole);
  for (const char* name : {"inlet", "hub", "outer", "ALL_ELEMENTS"}) {
    SCOPED_TRACE(name);
    const int part = file.part(name);
    const auto found = derived.on_part({Derivation::gradient, file.variable("p"), 0, "grad(p)"}, part);
    expect_all(found, file.session().part(part).nodes, {2, -3, 4}, 2e-4);
  }
}

TEST(DerivedValues, OfAVariableThatTheStepLacksThereAreNone) {
  const testkit::TemporaryDirectory directory;
  testkit::File first = testkit::file_of(testkit::one_tetrahedron());
  testkit::File second = first;
  first.region_sets.front().add(testkit::scalar_section({.name = "p", .values = {1.0, 2.0, 3.0, 4.0}}));
  second.header.set_cycle(1, 1.0);
  testkit::write_file(first, directory / "s_0.fld");
  testkit::write_file(second, directory / "s_1.fld");
  host_test::Reader reader;
  reader.session().open(directory / "s_0.fld");
  DerivedValues derived(reader.session(), is_never_cylindrical);
  const analysis::DerivedVariable gradient{Derivation::gradient, reader.variable("p"), 0, "grad(p)"};
  for (const char* part : {"wall", "ALL_ELEMENTS"}) {
    reader.session().select_step(0);
    expect_all(derived.on_part(gradient, reader.part(part)), 4, {1, 2, 3}, 1e-6);
    reader.session().select_step(1);
    EXPECT_EQ(derived.on_part(gradient, reader.part(part)), nullptr);
  }
}

}  // namespace
