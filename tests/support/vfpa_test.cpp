// Arrays of single or double precision, element by element.
#include "support/vfpa.h"

#include <gtest/gtest.h>
#include <limits>
#include <type_traits>

#include "tests/support/thrown_message.h"

namespace {

using fld::VFPA;

TEST(Vfpa, SinglePrecisionWidensToTheFloatsExactValue) {
  float values[] = {1.5F, 0.1F};
  const VFPA array{4, values};
  EXPECT_EQ(fld::vfpa2double(array, 0), 1.5);
  EXPECT_EQ(fld::vfpa2double(array, 1), 0.100000001490116119384765625);
  EXPECT_NE(fld::vfpa2double(array, 1), 0.1);
}

TEST(Vfpa, DoublePrecisionIsReadAsItStands) {
  double values[] = {0.1, -1.0e300};
  const VFPA array{8, values};
  EXPECT_EQ(fld::vfpa2double(array, 0), 0.1);
  EXPECT_EQ(fld::vfpa2double(array, 1), -1.0e300);
}

TEST(Vfpa, SinglePrecisionIsReadAsFloat) {
  float values[] = {0.1F, 2.5F};
  const VFPA array{4, values};
  EXPECT_EQ(fld::vfpa2float(array, 0), 0.1F);
  EXPECT_EQ(fld::vfpa2float(array, 1), 2.5F);
}

TEST(Vfpa, DoublePrecisionIsRoundedToFloat) {
  double values[] = {0.1, 16777217.0};
  const VFPA array{8, values};
  EXPECT_EQ(fld::vfpa2float(array, 0), 0.1F);
  EXPECT_EQ(fld::vfpa2float(array, 1), 16777216.0F);
}

TEST(Vfpa, StoringIntoSinglePrecisionRounds) {
  float values[] = {0.0F, 0.0F, 7.0F};
  const VFPA array{4, values};
  fld::double2vfpa(array, 0, 0.1);
  fld::double2vfpa(array, 1, 16777217.0);
  EXPECT_EQ(values[0], 0.1F);
  EXPECT_EQ(values[1], 16777216.0F);
  EXPECT_EQ(values[2], 7.0F);
}

TEST(Vfpa, StoringIntoDoublePrecisionKeepsTheValue) {
  double values[] = {0.0, 7.0};
  fld::double2vfpa({8, values}, 0, 0.1);
  EXPECT_EQ(values[0], 0.1);
  EXPECT_EQ(values[1], 7.0);
}

TEST(Vfpa, CopiesShareTheArray) {
  double values[] = {1.0};
  const VFPA array{8, values};
  const VFPA copy = array;
  fld::double2vfpa(copy, 0, 2.0);
  EXPECT_EQ(fld::vfpa2double(array, 0), 2.0);
}

TEST(Vfpa, StartsWithoutPrecisionAndData) {
  const VFPA array;
  EXPECT_EQ(array.precision, 0);
  EXPECT_EQ(array.data, nullptr);
}

TEST(Vfpa, AnotherPrecisionFailsWithTheSiteOfTheAccessor) {
  double values[] = {1.0};
  const VFPA array{2, values};
  EXPECT_EQ(thrown_message([&] { fld::vfpa2float(array, 0); }), "HANDLING AN INVALID DATA TYPE(1000199).");
  EXPECT_EQ(thrown_message([&] { fld::vfpa2double(array, 0); }), "HANDLING AN INVALID DATA TYPE(1000211).");
  EXPECT_EQ(thrown_message([&] { fld::double2vfpa(array, 0, 2.0); }),
            "HANDLING AN INVALID DATA TYPE(1000222).");
  EXPECT_EQ(values[0], 1.0);
}

TEST(Vfpa, APrecisionIsComparedInFull) {
  double values[] = {1.0};
  const VFPA array{(int64_t{1} << 32) + 8, values};
  EXPECT_THROW(fld::vfpa2double(array, 0), fld::FLDReadException);
  EXPECT_THROW(fld::vfpa2double({-8, values}, 0), fld::FLDReadException);
  EXPECT_THROW(fld::vfpa2double({0, values}, 0), fld::FLDReadException);
}

TEST(VisitElements, GivesTheArrayInItsOwnType) {
  float singles[] = {1.0F};
  double doubles[] = {2.0};
  const auto width = [](const VFPA& array) {
    size_t bytes = 0;
    fld::visit_elements(array, [&](auto* values) { bytes = sizeof *values; });
    return bytes;
  };
  EXPECT_EQ(width({4, singles}), 4U);
  EXPECT_EQ(width({8, doubles}), 8U);
  fld::visit_elements({8, doubles}, [](auto* values) { values[0] = 5; });
  EXPECT_EQ(doubles[0], 5.0);
}

TEST(VisitElements, OfAnotherPrecisionFailsLikeAFloatRead) {
  int visits = 0;
  EXPECT_EQ(thrown_message([&] {
              fld::visit_elements({2, nullptr}, [&](auto*) { ++visits; });
            }),
            "HANDLING AN INVALID DATA TYPE(1000199).");
  EXPECT_EQ(visits, 0);
}

}  // namespace
