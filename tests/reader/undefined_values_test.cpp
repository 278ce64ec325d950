// Values above 0.99 times the file's marker become the host's undefined value.
#include <cmath>
#include <limits>

#include "tests/reader/loaded_reader.h"
#include "tests/reader/small_datasets.h"

namespace reader_test {
namespace {

using testkit::Precision;

constexpr float kUndefined = -777.0F;

class UndefinedValues : public LoadedReader {
 protected:
  void SetUp() override { deliver(kUndefined); }
  void deliver(float value) {
    int request = 1;
    api().get_extra_data(&request, nullptr, nullptr, nullptr, nullptr, &value);
  }

  // The host's values for these values and markers.
  Floats served(const std::vector<double>& values, Precision precision, float single_marker,
                double double_marker) {
    testkit::File file = testkit::file_of(numbered_mesh(static_cast<int>(values.size())));
    file.header.set_unused(single_marker, double_marker);
    file.region_sets[0].add(testkit::scalar_section({.name = "T", .values = values, .precision = precision}));
    write_and_open(file);
    return host.scalar(1, 1);
  }
};

float above(float value) {
  return std::nextafter(value, std::numeric_limits<float>::infinity());
}

TEST_F(UndefinedValues, LargerThanTheMarkerIsUndefined) {
  EXPECT_EQ((Floats{1.0F, kUndefined, 5.0F, kUndefined}),
            served({1.0, 2.0e30, 5.0, 1.0e30}, Precision::kSingle, 1.0e30F, 1.0e30));
}

TEST_F(UndefinedValues, Exactly99HundredthsOfTheMarkerIsKept) {
  // 0.99 * 100 is 99 in double precision.
  EXPECT_EQ((Floats{99.0F, kUndefined, 98.0F, kUndefined}),
            served({99.0, above(99.0F), 98.0, 100.0}, Precision::kSingle, 100.0F, 1.0e30));
}

TEST_F(UndefinedValues, SinglePrecisionIsComparedWithTheSinglePrecisionMarker) {
  EXPECT_EQ((Floats{50.0F, kUndefined, kUndefined, kUndefined}),
            served({50.0, 150.0, 1.0e6, 2.0e6}, Precision::kSingle, 100.0F, 1.0e6));
}

TEST_F(UndefinedValues, DoublePrecisionIsComparedWithTheDoublePrecisionMarker) {
  EXPECT_EQ((Floats{50.0F, 150.0F, kUndefined, kUndefined}),
            served({50.0, 150.0, 1.0e6, 2.0e6}, Precision::kDouble, 100.0F, 1.0e6));
}

// A double is rounded to float before the comparison: slightly above 99 it becomes 99, which is kept;
// slightly below 99.1 * 0.99 it may be rounded up, which is not.
TEST_F(UndefinedValues, DoublePrecisionIsRoundedToSingleBeforeItIsCompared) {
  const double limit = 0.99 * 99.1;
  const auto rounded_up = static_cast<double>(static_cast<float>(limit));
  ASSERT_GT(rounded_up, limit) << "the limit has to round upwards";
  EXPECT_EQ((Floats{98.0F, kUndefined, 0.0F, 0.0F}),
            served({98.0, std::nextafter(limit, 0.0), 0.0, 0.0}, Precision::kDouble, 1.0e30F, 99.1));
  EXPECT_EQ(
      (Floats{99.0F, kUndefined, 0.0F, 0.0F}),
      served({99.0000001, static_cast<double>(above(99.0F)), 0.0, 0.0}, Precision::kDouble, 1.0e30F, 100.0));
}

TEST_F(UndefinedValues, NegativeValuesAreKeptHoweverLarge) {
  EXPECT_EQ((Floats{-1.0e30F, -3.0e38F, 0.0F, 1.0F}),
            served({-1.0e30, -3.0e38, 0.0, 1.0}, Precision::kSingle, 1.0e30F, 1.0e30));
}

TEST_F(UndefinedValues, NotANumberIsKeptAndInfinityIsNot) {
  const Floats values =
      served({std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity(),
              -std::numeric_limits<double>::infinity(), 1.0},
             Precision::kSingle, 1.0e30F, 1.0e30);
  EXPECT_TRUE(std::isnan(values[0]));
  EXPECT_EQ(kUndefined, values[1]);
  EXPECT_EQ(-std::numeric_limits<float>::infinity(), values[2]);
}

TEST_F(UndefinedValues, DoubleBeyondTheFloatsIsInfinityAndSoUndefined) {
  EXPECT_EQ((Floats{kUndefined, 1.0F, 1.0F, 1.0F}),
            served({1.0e200, 1.0, 1.0, 1.0}, Precision::kDouble, 1.0e30F, 1.0e300));
}

TEST_F(UndefinedValues, NegativeMarkerMakesEverythingAboveItUndefined) {
  EXPECT_EQ((Floats{-200.0F, kUndefined, kUndefined, -99.0F}),
            served({-200.0, -98.0, 5.0, -99.0}, Precision::kSingle, -100.0F, -100.0));
}

TEST_F(UndefinedValues, FileWithoutAMarkerHasNone) {
  testkit::File file = testkit::file_of(numbered_mesh(4));
  file.header.remove("Unused");
  file.region_sets[0].add(testkit::scalar_section({.name = "T", .values = {1.0e30, 3.0e38, 1.0, 2.0}}));
  file.region_sets[0].add(testkit::scalar_section(
      {.name = "D", .values = {1.0e30, 3.0e38, 1.0, 2.0}, .precision = Precision::kDouble}));
  write_and_open(file);
  EXPECT_EQ((Floats{1.0e30F, 3.0e38F, 1.0F, 2.0F}), host.scalar(1, 1));
  EXPECT_EQ((Floats{1.0e30F, 3.0e38F, 1.0F, 2.0F}), host.scalar(2, 1));
}

TEST_F(UndefinedValues, EveryComponentOfAVectorIsLookedAtByItsOwnPrecision) {
  testkit::File file = testkit::file_of(numbered_mesh(4));
  file.header.set_unused(100.0F, 1000.0);
  testkit::Vector vector{.name = "U"};
  for (auto* axis : {&vector.x, &vector.y, &vector.z}) *axis = {1.0, 500.0, 2000.0, 2.0};
  vector.precision = {Precision::kSingle, Precision::kDouble, Precision::kSingle};
  file.region_sets[0].add(testkit::vector_section(vector));
  write_and_open(file);
  EXPECT_EQ((Floats{1, kUndefined, kUndefined, 2}), host.vector(1, 1, 0));
  EXPECT_EQ((Floats{1, 500, kUndefined, 2}), host.vector(1, 1, 1));
  EXPECT_EQ((Floats{1, kUndefined, kUndefined, 2}), host.vector(1, 1, 2));
}

TEST_F(UndefinedValues, MarkerIsThatOfTheStepsFile) {
  for (const int cycle : {1, 2}) {
    testkit::File file = file_at(cycle, {numbered_mesh(4)});
    file.header.set_unused(cycle == 1 ? 10.0F : 1000.0F, 1.0e30);
    file.region_sets[0].add(testkit::scalar_section({.name = "T", .values = {1.0, 100.0, 2000.0, 9.0}}));
    write(file, "case_" + std::to_string(cycle) + ".fld");
  }
  open(in("case_1.fld"));
  EXPECT_EQ((Floats{1, kUndefined, kUndefined, 9}), host.scalar(1, 1));
  select(2, 1);
  EXPECT_EQ((Floats{1, 100, kUndefined, 9}), host.scalar(1, 1));
}

TEST_F(UndefinedValues, ReplacementIsTheValueDeliveredLast) {
  deliver(5.5F);
  EXPECT_EQ((Floats{1, 5.5F, 1, 1}), served({1.0, 1.0e30, 1.0, 1.0}, Precision::kDouble, 1.0e30F, 1.0e30));
}

}  // namespace
}  // namespace reader_test
