// Replacing values that mean "undefined".
#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <string>
#include <vector>

#include "support/vfpa.h"
#include "tests/support/thrown_message.h"

namespace {

constexpr float kInfinity = std::numeric_limits<float>::infinity();

TEST(Clipping, AFloatAboveNinetyNinePercentOfTheLimitIsReplaced) {
  float values[] = {1.0F, 2.0E30F, 5.0F};
  fld::cv_cut_fld({4, values}, 3, 1.0E30F, 0.0, -1.0);
  EXPECT_EQ(values[0], 1.0F);
  EXPECT_EQ(values[1], -1.0F);
  EXPECT_EQ(values[2], 5.0F);
}

TEST(Clipping, ExactlyNinetyNinePercentOfTheLimitIsKept) {
  // 0.99 * 100.0 is 99.0 in double precision.
  float values[] = {99.0F, std::nextafter(99.0F, 100.0F), 100.0F, 98.0F};
  fld::cv_cut_fld({4, values}, 4, 100.0F, 0.0, -1.0);
  EXPECT_EQ(values[0], 99.0F);
  EXPECT_EQ(values[1], -1.0F);
  EXPECT_EQ(values[2], -1.0F);
  EXPECT_EQ(values[3], 98.0F);
}

TEST(Clipping, SinglePrecisionTakesTheFloatLimit) {
  float values[] = {50.0F};
  fld::cv_cut_fld({4, values}, 1, 10.0F, 1000.0, -1.0);
  EXPECT_EQ(values[0], -1.0F);
}

TEST(Clipping, DoublePrecisionTakesTheDoubleLimit) {
  double values[] = {50.0, 1500.0};
  fld::cv_cut_fld({8, values}, 2, 10.0F, 1000.0, -1.0);
  EXPECT_EQ(values[0], 50.0);
  EXPECT_EQ(values[1], -1.0);
}

TEST(Clipping, ADoubleIsComparedAfterRoundingToFloat) {
  // 0.99 rounds up to a float above 0.99; 99.000000001 rounds down to 99.
  double below[] = {0.99};
  fld::cv_cut_fld({8, below}, 1, 0.0F, 1.0, -1.0);
  EXPECT_EQ(below[0], -1.0);
  double above[] = {99.000000001};
  fld::cv_cut_fld({8, above}, 1, 0.0F, 100.0, -1.0);
  EXPECT_EQ(above[0], 99.000000001);
}

TEST(Clipping, ADoubleBeyondFloatsIsReplaced) {
  double values[] = {1.0e300, -1.0e300};
  fld::cv_cut_fld({8, values}, 2, 0.0F, 1.0e30, -1.0);
  EXPECT_EQ(values[0], -1.0);
  EXPECT_EQ(values[1], -1.0e300);
}

TEST(Clipping, OneValueAmongManyIsReplacedWhereverItStands) {
  for (const size_t place : {size_t{0}, size_t{1023}, size_t{1024}, size_t{2048}, size_t{2999}}) {
    std::vector<float> values(3000, 1.0F);
    values[place] = 200.0F;
    fld::cv_cut_fld({4, values.data()}, 3000, 100.0F, 0.0, -1.0);
    std::vector<float> expected(3000, 1.0F);
    expected[place] = -1.0F;
    EXPECT_EQ(values, expected) << place;
  }
}

TEST(Clipping, ALimitBetweenTwoFloatsSeparatesThem) {
  // 0.99 * 10 is 9.9, which is between these neighbours.
  const float below = 9.9F;
  const float above = std::nextafter(below, 10.0F);
  ASSERT_LT(static_cast<double>(below), 9.9);
  ASSERT_LT(9.9, static_cast<double>(above));
  float values[] = {below, above};
  fld::cv_cut_fld({4, values}, 2, 10.0F, 0.0, -1.0);
  EXPECT_EQ(values[0], below);
  EXPECT_EQ(values[1], -1.0F);
}

TEST(Clipping, NotANumberStays) {
  float singles[] = {std::nanf("")};
  fld::cv_cut_fld({4, singles}, 1, 1.0F, 0.0, -1.0);
  EXPECT_TRUE(std::isnan(singles[0]));
  double doubles[] = {std::nan("")};
  fld::cv_cut_fld({8, doubles}, 1, 0.0F, 1.0, -1.0);
  EXPECT_TRUE(std::isnan(doubles[0]));
}

TEST(Clipping, AnInfiniteLimitKeepsEverything) {
  float values[] = {kInfinity, 3.0E38F, -kInfinity};
  fld::cv_cut_fld({4, values}, 3, kInfinity, 0.0, -1.0);
  EXPECT_EQ(values[0], kInfinity);
  EXPECT_EQ(values[1], 3.0E38F);
  EXPECT_EQ(values[2], -kInfinity);
}

TEST(Clipping, InfinityIsAboveAFiniteLimit) {
  float values[] = {kInfinity};
  fld::cv_cut_fld({4, values}, 1, 1.0E30F, 0.0, -1.0);
  EXPECT_EQ(values[0], -1.0F);
}

TEST(Clipping, ANegativeLimitIsShrunkLikewise) {
  float values[] = {-100.0F, -99.5F, -98.5F, 0.0F};
  fld::cv_cut_fld({4, values}, 4, -100.0F, 0.0, 1.0);
  EXPECT_EQ(values[0], -100.0F);
  EXPECT_EQ(values[1], -99.5F);
  EXPECT_EQ(values[2], 1.0F);
  EXPECT_EQ(values[3], 1.0F);
}

TEST(Clipping, TheReplacementIsRoundedToThePrecision) {
  float singles[] = {5.0F};
  fld::cv_cut_fld({4, singles}, 1, 1.0F, 0.0, 0.1);
  EXPECT_EQ(singles[0], 0.1F);
  double doubles[] = {5.0};
  fld::cv_cut_fld({8, doubles}, 1, 0.0F, 1.0, 0.1);
  EXPECT_EQ(doubles[0], 0.1);
}

TEST(Clipping, OnlyTheFirstNElementsAreLookedAt) {
  double values[] = {5.0, 5.0, 5.0};
  fld::cv_cut_fld({8, values}, 2, 0.0F, 1.0, 0.0);
  EXPECT_EQ(values[0], 0.0);
  EXPECT_EQ(values[1], 0.0);
  EXPECT_EQ(values[2], 5.0);
}

TEST(Clipping, NoElementsAreNotTouched) {
  double values[] = {5.0};
  fld::cv_cut_fld({8, values}, 0, 0.0F, 1.0, 0.0);
  fld::cv_cut_fld({8, values}, -3, 0.0F, 1.0, 0.0);
  EXPECT_EQ(values[0], 5.0);
}

TEST(Clipping, AnotherPrecisionIsReportedEvenWithoutElements) {
  testing::internal::CaptureStderr();
  fld::cv_cut_fld({2, nullptr}, 0, 1.0F, 1.0, 0.0);
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "HANDLING AN INVALID DATA TYPE(1000120).");
}

TEST(Clipping, AnotherPrecisionIsReportedAndFailsAtTheFirstElement) {
  double values[] = {5.0};
  testing::internal::CaptureStderr();
  const std::string message = thrown_message([&] { fld::cv_cut_fld({2, values}, 1, 1.0F, 1.0, 0.0); });
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "HANDLING AN INVALID DATA TYPE(1000120).");
  EXPECT_EQ(message, "HANDLING AN INVALID DATA TYPE(1000199).");
  EXPECT_EQ(values[0], 5.0);
}

TEST(Clipping, AGoodPrecisionIsNotReported) {
  double values[] = {5.0};
  testing::internal::CaptureStderr();
  fld::cv_cut_fld({8, values}, 1, 1.0F, 1.0, 0.0);
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

}  // namespace
