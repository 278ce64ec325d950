// Scalars and vectors on parts at the current step.
#include <limits>

#include "tests/reader/loaded_reader.h"
#include "tests/reader/small_datasets.h"

namespace reader_test {
namespace {

constexpr int kScalar = 1;
constexpr int kVector = 2;
constexpr int kMaterial = 3;

// Parts: a surface over nodes 3, 5, 9, a volume over nodes 2, 4, 6, 8, the whole mesh of ten nodes.
class VariableValues : public LoadedReader {
 protected:
  static constexpr int kSurface = 1;
  static constexpr int kVolume = 2;
  static constexpr int kWholeMesh = 3;

  static testkit::Mesh mesh() {
    testkit::Mesh mesh = numbered_mesh(10);
    mesh.elements.add(testkit::kTetrahedron, {8, 2, 6, 4});
    mesh.materials = {1, 1};
    add_triangle_surface(mesh, "wall", {9, 3, 5});
    add_volume(mesh, "fluid", {1});
    return mesh;
  }
  void open_with(const testkit::Section& scalar, const testkit::Section& vector) {
    testkit::File file = testkit::file_of(mesh());
    file.region_sets[0].add(scalar);
    file.region_sets[0].add(vector);
    write_and_open(file);
  }
  void open_numbered() { open_with(numbered_scalar("T", 10), numbered_vector("U", 10)); }

  // The answer to a request for two values that writes nothing.
  static Answer nothing(int result) { return {result, {kUntouchedFloat, kUntouchedFloat}}; }
};

TEST_F(VariableValues, ScalarsComeInTheOrderOfThePartsNodes) {
  open_numbered();
  EXPECT_EQ((Floats{3, 5, 9}), host.scalar(kScalar, kSurface));
  EXPECT_EQ((Floats{2, 4, 6, 8}), host.scalar(kScalar, kVolume));
  EXPECT_EQ((Floats{0, 1, 2, 3, 4, 5, 6, 7, 8, 9}), host.scalar(kScalar, kWholeMesh));
}

TEST_F(VariableValues, ComponentsOfAVectorAreXYAndZ) {
  open_numbered();
  EXPECT_EQ((Floats{3, 5, 9}), host.vector(kVector, kSurface, 0));
  EXPECT_EQ((Floats{103, 105, 109}), host.vector(kVector, kSurface, 1));
  EXPECT_EQ((Floats{203, 205, 209}), host.vector(kVector, kSurface, 2));
  EXPECT_EQ((Floats{202, 204, 206, 208}), host.vector(kVector, kVolume, 2));
  EXPECT_EQ(209.0F, host.vector(kVector, kWholeMesh, 2)[9]);
}

TEST_F(VariableValues, ElementTypePlaysNoRoleForValuesPerNode) {
  open_numbered();
  for (const int slot : {0, 6, 26, -1, 1000}) {
    EXPECT_EQ((Answer{1, {3, 5, 9}}), host.ask({.variable = kScalar, .part = kSurface, .slot = slot}, 3));
  }
}

TEST_F(VariableValues, ComponentPlaysNoRoleForScalars) {
  open_numbered();
  for (const int component : {1, 2, 3, -1}) {
    EXPECT_EQ((Answer{1, {3, 5, 9}}),
              host.ask({.variable = kScalar, .part = kSurface, .component = component}, 3));
  }
}

TEST_F(VariableValues, ImaginaryPartsAreNotThere) {
  open_numbered();
  for (const int imaginary : {1, -1}) {
    EXPECT_EQ(nothing(2), host.ask({.variable = kScalar, .part = 1, .imaginary = imaginary}, 2));
    EXPECT_EQ(nothing(2),
              host.ask({.variable = kVector, .part = 1, .var_type = 2, .imaginary = imaginary}, 2));
    EXPECT_EQ(nothing(2), host.ask({.variable = kMaterial, .part = 1, .slot = 6, .imaginary = imaginary}, 2));
    EXPECT_EQ(nothing(2), host.ask({.variable = 99, .part = 99, .var_type = 99, .imaginary = imaginary}, 2));
  }
}

TEST_F(VariableValues, OtherKindOfVariableThanAskedForWritesNothing) {
  open_numbered();
  for (const int type : {2, 0, 3, -1}) {
    EXPECT_EQ(nothing(1), host.ask({.variable = kScalar, .part = 1, .var_type = type}, 2)) << type;
    EXPECT_EQ(nothing(1), host.ask({.variable = kMaterial, .part = 1, .var_type = type, .slot = 6}, 2))
        << type;
  }
  for (const int type : {1, 0, 3, -1}) {
    EXPECT_EQ(nothing(1), host.ask({.variable = kVector, .part = 1, .var_type = type}, 2)) << type;
  }
}

TEST_F(VariableValues, VariableNumberOutsideTheRangeWritesNothing) {
  open_numbered();
  for (const int variable : {4, 5, 0, -1, std::numeric_limits<int>::max(), std::numeric_limits<int>::min()}) {
    for (const int type : {1, 2}) {
      EXPECT_EQ(nothing(1), host.ask({.variable = variable, .part = 1, .var_type = type, .slot = 6}, 2));
    }
  }
}

TEST_F(VariableValues, ComponentOutsideTheRangeWritesNothing) {
  open_numbered();
  for (const int component : {3, -1, std::numeric_limits<int>::max(), std::numeric_limits<int>::min()}) {
    EXPECT_EQ(nothing(1),
              host.ask({.variable = kVector, .part = 1, .var_type = 2, .component = component}, 2));
  }
}

TEST_F(VariableValues, PartNumberOutsideTheRangeWritesNothing) {
  open_numbered();
  for (const int part : {0, -1, 4, 5, std::numeric_limits<int>::max(), std::numeric_limits<int>::min()}) {
    EXPECT_EQ(nothing(1), host.ask({.variable = kScalar, .part = part}, 2));
    EXPECT_EQ(nothing(1), host.ask({.variable = kVector, .part = part, .var_type = 2}, 2));
    EXPECT_EQ(nothing(1), host.ask({.variable = kMaterial, .part = part, .slot = 14}, 2));
  }
}

TEST_F(VariableValues, PartWithoutNodesWritesNothingAndReadsNothing) {
  testkit::Mesh with_empty = mesh();
  add_volume(with_empty, "empty", {});
  testkit::File file = testkit::file_of(with_empty);
  file.region_sets[0].add(numbered_scalar("T", 10));
  const auto path = write(file);
  open(path);
  std::filesystem::remove(path);
  EXPECT_EQ("", stderr_of([&] { EXPECT_EQ(nothing(1), host.ask({.variable = 1, .part = 3}, 2)); }));
}

TEST_F(VariableValues, QuantityThatTheStepLacksIsMissingAndNothingIsWritten) {
  testkit::File first = file_at(1, {mesh()});
  first.region_sets[0].add(numbered_scalar("T", 10));
  first.region_sets[0].add(numbered_vector("U", 10));
  write(first, "case_1.fld");
  testkit::File second = file_at(2, {mesh()});
  second.region_sets[0].add(numbered_scalar("U", 10));
  second.region_sets[0].add(numbered_vector("T", 10));
  write(second, "case_2.fld");
  open(in("case_1.fld"));
  ASSERT_EQ(5, api().get_number_of_variables());  // scalars T, U, vectors U, T
  EXPECT_EQ("", stderr_of([&] {
              EXPECT_EQ(nothing(2), host.ask({.variable = 2, .part = 1}, 2));
              EXPECT_EQ(nothing(2), host.ask({.variable = 4, .part = 1, .var_type = 2}, 2));
            }));
  select(2, 1);
  EXPECT_EQ(nothing(2), host.ask({.variable = 1, .part = 1}, 2));
  EXPECT_EQ(nothing(2), host.ask({.variable = 3, .part = 1, .var_type = 2}, 2));
  EXPECT_EQ((Floats{3, 5, 9}), host.scalar(2, 1));
  EXPECT_EQ((Floats{3, 5, 9}), host.vector(4, 1, 0));
}

TEST_F(VariableValues, StepWithoutAFileHasNoValues) {
  open_numbered();
  for (const int step : {1, 2, -1, std::numeric_limits<int>::max(), std::numeric_limits<int>::min()}) {
    select(2, step);
    EXPECT_EQ(nothing(2), host.ask({.variable = kScalar, .part = 1}, 2)) << step;
    EXPECT_EQ(nothing(2), host.ask({.variable = kVector, .part = 1, .var_type = 2}, 2)) << step;
  }
  select(2, 0);
  EXPECT_EQ((Floats{3, 5, 9}), host.scalar(kScalar, kSurface));
}

TEST_F(VariableValues, QuantityThatOccursTwiceIsTheFirst) {
  testkit::File file = testkit::file_of(mesh());
  file.region_sets[0].add(numbered_scalar("T", 10, 100.0));
  file.region_sets[0].add(numbered_scalar("T", 10, 200.0));
  write_and_open(file);
  EXPECT_EQ((Floats{103, 105, 109}), host.scalar(1, kSurface));
}

TEST_F(VariableValues, NameThatBeginsLikeAnotherIsNotMistakenForIt) {
  testkit::File file = testkit::file_of(mesh());
  file.region_sets[0].add(numbered_scalar("TEMP2", 10, 100.0));
  file.region_sets[0].add(numbered_scalar("TEMP", 10, 200.0));
  write_and_open(file);
  EXPECT_EQ((Floats{103, 105, 109}), host.scalar(1, kSurface));
  EXPECT_EQ((Floats{203, 205, 209}), host.scalar(2, kSurface));
}

TEST_F(VariableValues, EmptyNameIsANameLikeAnyOther) {
  testkit::File file = testkit::file_of(mesh());
  file.region_sets[0].add(numbered_scalar("", 10, 100.0));
  file.region_sets[0].add(numbered_vector("", 10, 200.0));
  write_and_open(file);
  EXPECT_EQ((Floats{103, 105, 109}), host.scalar(1, kSurface));
  EXPECT_EQ((Floats{203, 205, 209}), host.vector(2, kSurface, 0));
}

TEST_F(VariableValues, DoublePrecisionIsRoundedToSingle) {
  open_with(testkit::scalar_section({.name = "T",
                                     .values = {0, 0, 0, 0.1, 0, 16777219.0, 0, 0, 0, -1.0e-60},
                                     .precision = testkit::Precision::kDouble}),
            numbered_vector("U", 10));
  EXPECT_EQ((Floats{0.1F, 16777220.0F, -0.0F}), host.scalar(kScalar, kSurface));
}

TEST_F(VariableValues, EachComponentMayHaveItsOwnPrecision) {
  testkit::Vector vector{.name = "U"};
  for (auto* axis : {&vector.x, &vector.y, &vector.z}) *axis = std::vector<double>(10, 0.1);
  vector.precision = {testkit::Precision::kDouble, testkit::Precision::kSingle, testkit::Precision::kDouble};
  open_with(numbered_scalar("T", 10), testkit::vector_section(vector));
  for (const int component : {0, 1, 2}) {
    EXPECT_EQ((Floats{0.1F, 0.1F, 0.1F}), host.vector(kVector, kSurface, component));
  }
}

TEST_F(VariableValues, ValuesOfManyRecordsAreTheSame) {
  testkit::File file = testkit::file_of(mesh());
  file.region_sets[0].add(numbered_scalar("T", 10));
  file.split = 3;
  write_and_open(file);
  EXPECT_EQ((Floats{3, 5, 9}), host.scalar(1, kSurface));
}

TEST_F(VariableValues, FewerValuesThanNodesLeaveTheRestUndefined) {
  int request = 1;
  float undefined = -9.5F;
  api().get_extra_data(&request, nullptr, nullptr, nullptr, nullptr, &undefined);
  open_with(numbered_scalar("T", 5), numbered_vector("U", 9));
  EXPECT_EQ((Floats{3, -9.5, -9.5}), host.scalar(kScalar, kSurface));
  EXPECT_EQ((Floats{2, 4, -9.5, -9.5}), host.scalar(kScalar, kVolume));
  EXPECT_EQ((Floats{0, 1, 2, 3, 4, -9.5, -9.5, -9.5, -9.5, -9.5}), host.scalar(kScalar, kWholeMesh));
  EXPECT_EQ((Floats{203, 205, -9.5}), host.vector(kVector, kSurface, 2));
}

TEST_F(VariableValues, QuantityWithoutValuesIsUndefinedEverywhere) {
  int request = 1;
  float undefined = 7.25F;
  api().get_extra_data(&request, nullptr, nullptr, nullptr, nullptr, &undefined);
  open_with(numbered_scalar("T", 0), numbered_vector("U", 0));
  EXPECT_EQ((Floats{7.25, 7.25, 7.25}), host.scalar(kScalar, kSurface));
  EXPECT_EQ(Floats(10, 7.25F), host.vector(kVector, kWholeMesh, 1));
}

TEST_F(VariableValues, MoreValuesThanNodesAreNotLookedAt) {
  open_with(numbered_scalar("T", 5000), numbered_vector("U", 5000));
  EXPECT_EQ((Floats{0, 1, 2, 3, 4, 5, 6, 7, 8, 9}), host.scalar(kScalar, kWholeMesh));
}

TEST_F(VariableValues, CoordinatesAndConnectivityInBetweenChangeNothing) {
  open_numbered();
  host.coordinates(kVolume);
  EXPECT_EQ((Floats{3, 5, 9}), host.scalar(kScalar, kSurface));
  host.rows(kWholeMesh, 14);
  EXPECT_EQ((Floats{2, 4, 6, 8}), host.scalar(kScalar, kVolume));
  host.parts();
  EXPECT_EQ((Floats{103, 105, 109}), host.vector(kVector, kSurface, 1));
}

// A vector of a file whose dimension is neither 2 nor 3 is skipped with two components, but read with three.
TEST_F(VariableValues, VectorWithTwoComponentsCannotBeRead) {
  testkit::File file = testkit::file_of(mesh());
  file.header.set_dimension(1);
  testkit::Section vector = numbered_vector("U", 10);
  vector.blocks.pop_back();
  file.region_sets[0].add(vector);
  write_and_open(file);
  EXPECT_ANY_THROW(stderr_of([&] { host.ask({.variable = 1, .part = 1, .var_type = 2}, 3); }));
}

}  // namespace
}  // namespace reader_test
