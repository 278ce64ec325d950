// How often quantities are read from disk, counted by file opens.
#include <filesystem>
#include <string>

#include "tests/reader/loaded_reader.h"
#include "tests/reader/open_counter.h"
#include "tests/reader/small_datasets.h"

namespace reader_test {
namespace {

// A series of four files with two scalars "A" and "B", a vector "V" and, so that one name is of both kinds, a
// vector "A"; with five parts.
class QuantityCache : public LoadedReader {
 protected:
  static constexpr int kScalarA = 1;
  static constexpr int kScalarB = 2;
  static constexpr int kVectorV = 3;
  static constexpr int kVectorA = 4;
  static constexpr int kSteps = 4;

  void SetUp() override {
    testkit::Mesh mesh = numbered_mesh(8);
    add_element(mesh, testkit::kTetrahedron, 4);
    add_triangle_surface(mesh, "one", {0, 1, 2});
    add_triangle_surface(mesh, "two", {2, 3, 4});
    add_volume(mesh, "low", {0});
    add_volume(mesh, "high", {1});
    for (int step = 0; step < kSteps; ++step) {
      testkit::File file = file_at(step, {mesh});
      auto& set = file.region_sets[0];
      set.add(numbered_scalar("A", 8, 1000.0 * step));
      set.add(numbered_scalar("B", 8, 1000.0 * step + 100.0));
      set.add(numbered_vector("V", 8, 1000.0 * step + 200.0));
      set.add(numbered_vector("A", 8, 1000.0 * step + 500.0));
      write(file, path(step).filename().string());
    }
    open(path(0));
    for (int step = 0; step < kSteps; ++step) openings_.watch(path(step));
  }

  std::filesystem::path path(int step) const { return in("case_" + std::to_string(step) + ".fld"); }
  // Opens of any file since the last call.
  int opened() { return openings_.take_all(); }

  void ask_scalar_for_all_parts(int variable) {
    for (int part = 1; part <= 5; ++part) host.scalar(variable, part);
  }
  void ask_vector_for_all_parts(int variable) {
    for (int component = 0; component < 3; ++component) {
      for (int part = 1; part <= 5; ++part) host.vector(variable, part, component);
    }
  }

  OpenCounter openings_;
};

TEST_F(QuantityCache, ScalarIsReadOnceForAllParts) {
  ask_scalar_for_all_parts(kScalarA);
  EXPECT_EQ(1, opened());
  ask_scalar_for_all_parts(kScalarA);
  EXPECT_EQ(0, opened());
}

TEST_F(QuantityCache, VectorIsReadOnceForAllPartsAndComponents) {
  ask_vector_for_all_parts(kVectorV);
  EXPECT_EQ(1, opened());
}

TEST_F(QuantityCache, OneScalarIsHeldAtATime) {
  host.scalar(kScalarA, 1);
  host.scalar(kScalarB, 1);
  host.scalar(kScalarA, 1);
  EXPECT_EQ(3, opened());
}

TEST_F(QuantityCache, OneVectorIsHeldBesideTheScalar) {
  host.scalar(kScalarA, 1);
  host.vector(kVectorV, 1, 0);
  EXPECT_EQ(2, opened());
  EXPECT_EQ((Floats{0, 1, 2}), host.scalar(kScalarA, 1));
  EXPECT_EQ((Floats{402, 403, 404}), host.vector(kVectorV, 2, 2));
  EXPECT_EQ(0, opened());
}

TEST_F(QuantityCache, ScalarAndVectorOfOneNameAreHeldApart) {
  EXPECT_EQ((Floats{0, 1, 2}), host.scalar(kScalarA, 1));
  EXPECT_EQ((Floats{500, 501, 502}), host.vector(kVectorA, 1, 0));
  EXPECT_EQ((Floats{0, 1, 2}), host.scalar(kScalarA, 1));
  EXPECT_EQ((Floats{600, 601, 602}), host.vector(kVectorA, 1, 1));
  EXPECT_EQ(2, opened());
}

TEST_F(QuantityCache, SelectingTheSameStepAgainKeepsWhatIsHeld) {
  select(2, 0);
  host.scalar(kScalarA, 1);
  host.vector(kVectorV, 1, 0);
  EXPECT_EQ(2, opened());
  select(2, 0);
  host.scalar(kScalarA, 1);
  host.vector(kVectorV, 1, 0);
  EXPECT_EQ(0, opened());
}

TEST_F(QuantityCache, SelectingTheSameStepOfTheOtherSetDropsIt) {
  select(1, 0);
  host.scalar(kScalarA, 1);
  host.vector(kVectorV, 1, 0);
  opened();
  EXPECT_EQ("", select(2, 0)) << "and reads no geometry";
  EXPECT_EQ(0, opened());
  host.scalar(kScalarA, 1);
  host.vector(kVectorV, 1, 0);
  EXPECT_EQ(2, opened());
}

TEST_F(QuantityCache, AnotherStepHasItsOwnValues) {
  for (const int step : {2, 1, 3, 0, 2}) {
    select(2, step);
    const auto start = static_cast<float>(1000 * step);
    EXPECT_EQ((Floats{start, start + 1, start + 2}), host.scalar(kScalarA, 1));
    EXPECT_EQ((Floats{start + 302, start + 303, start + 304}), host.vector(kVectorV, 2, 1));
    EXPECT_EQ(2, openings_.take(path(step)));
    EXPECT_EQ(0, opened());
  }
}

TEST_F(QuantityCache, StepWithoutAFileDropsItToo) {
  host.scalar(kScalarA, 1);
  select(1, 99);
  select(1, 0);
  opened();
  host.scalar(kScalarA, 1);
  EXPECT_EQ(1, opened());
}

// A whole session over the series, quantity by quantity, like a host.
TEST_F(QuantityCache, EveryQuantityOfEveryStepIsReadOnceHoweverManyPartsAsk) {
  for (int step = 0; step < kSteps; ++step) {
    select(1, step);
    select(2, step);
    opened();
    for (const int variable : {kScalarA, kScalarB}) ask_scalar_for_all_parts(variable);
    for (const int variable : {kVectorV, kVectorA}) ask_vector_for_all_parts(variable);
    EXPECT_EQ(4, openings_.take(path(step))) << "one for each of the four quantities";
    EXPECT_EQ(0, opened()) << "and no other file";
  }
}

TEST_F(QuantityCache, MaterialsAreNotRead) {
  for (int part = 1; part <= 5; ++part) host.materials(part, part <= 2 ? 6 : 14);
  EXPECT_EQ(0, opened());
}

TEST_F(QuantityCache, PartsAreServedWithoutReading) {
  for (int part = 1; part <= 5; ++part) {
    host.coordinates(part);
    host.rows(part, part <= 2 ? 6 : 14);
  }
  EXPECT_EQ(0, opened());
}

TEST_F(QuantityCache, ExitDropsIt) {
  host.scalar(kScalarA, 1);
  stderr_of([&] { api().exit_routine(); });
  open(path(0));
  opened();
  EXPECT_EQ((Floats{0, 1, 2}), host.scalar(kScalarA, 1));
  EXPECT_EQ(1, opened());
}

}  // namespace
}  // namespace reader_test
