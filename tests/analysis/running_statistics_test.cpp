// Means over steps.
#include "analysis/running_statistics.h"

#include "gtest/gtest.h"
#include <cmath>
#include <stdexcept>
#include <vector>

#include "host/undefined_value.h"

namespace {

TEST(RunningStatistics, OfThreeSteps) {
  analysis::RunningStatistics found;
  for (const std::vector<float>& step : {std::vector<float>{1, -2}, {2, -2}, {6, -2}}) found.add(step);
  ASSERT_EQ(found.size(), 2U);
  EXPECT_EQ(found.count(0), 3U);
  EXPECT_DOUBLE_EQ(found.mean(0), 3);
  EXPECT_DOUBLE_EQ(found.root_mean_square(0), std::sqrt(41.0 / 3));
  EXPECT_DOUBLE_EQ(found.deviation(0), std::sqrt(14.0 / 3));
  EXPECT_EQ(found.minimum(0), 1);
  EXPECT_EQ(found.maximum(0), 6);
  EXPECT_DOUBLE_EQ(found.mean(1), -2);
  EXPECT_DOUBLE_EQ(found.root_mean_square(1), 2);
  EXPECT_DOUBLE_EQ(found.deviation(1), 0);
}

TEST(RunningStatistics, StepsWithoutAValueDoNotCount) {
  analysis::RunningStatistics found;
  found.add(std::vector<float>{host::kUndefinedValue, 4, std::nanf("")});
  found.add(std::vector<float>{5, host::kUndefinedValue, host::kUndefinedValue});
  found.add(std::vector<float>{7, host::kUndefinedValue, host::kUndefinedValue});
  EXPECT_EQ(found.count(0), 2U);
  EXPECT_DOUBLE_EQ(found.mean(0), 6);
  EXPECT_DOUBLE_EQ(found.mean(1), 4);
  EXPECT_EQ(found.count(2), 0U);
  EXPECT_TRUE(std::isnan(found.mean(2)));
  EXPECT_TRUE(std::isnan(found.root_mean_square(2)));
  EXPECT_TRUE(std::isnan(found.deviation(2)));
  EXPECT_TRUE(std::isnan(found.minimum(2)));
  EXPECT_TRUE(std::isnan(found.maximum(2)));
}

// A million steps of a small wave on a large value.
TEST(RunningStatistics, KeepsTheDigitsOfSmallDeviations) {
  analysis::RunningStatistics found;
  for (int step = 0; step < 1'000'000; ++step)
    found.add(std::vector<float>{step % 2 == 0 ? 101325.0F : 101325.125F});
  EXPECT_NEAR(found.mean(0), 101325.0625, 1e-7);
  EXPECT_NEAR(found.deviation(0), 0.0625, 1e-9);
}

TEST(RunningStatistics, AnotherNumberOfValuesIsAnError) {
  analysis::RunningStatistics found;
  found.add(std::vector<float>{1, 2});
  EXPECT_THROW(found.add(std::vector<float>{1}), std::invalid_argument);
}

}  // namespace
