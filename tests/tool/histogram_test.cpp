// Counting values in intervals.
#include "tool/histogram.h"

#include "gtest/gtest.h"
#include <limits>
#include <vector>

#include "host/undefined_value.h"

namespace {

using Counts = std::vector<std::size_t>;

TEST(Histogram, CountsFromTheLowestToTheHighestValue) {
  const tool::Histogram histogram = tool::make_histogram(std::vector<float>{0, 1, 2, 3, 3.9F, 4}, 4);
  EXPECT_EQ(histogram.counts, (Counts{1, 1, 1, 3}));
  EXPECT_EQ(histogram.low, 0);
  EXPECT_EQ(histogram.high, 4);
  EXPECT_EQ(histogram.edge(1), 1.0);
  EXPECT_EQ(histogram.edge(4), 4.0);
}

TEST(Histogram, LeavesOutWhatIsNoFiniteNumber) {
  using Limits = std::numeric_limits<float>;
  const std::vector<float> values = {
      host::kUndefinedValue, Limits::quiet_NaN(), Limits::infinity(), -Limits::infinity(), -1, 1};
  EXPECT_EQ(tool::make_histogram(values, 2).counts, (Counts{1, 1}));
  EXPECT_TRUE(tool::make_histogram(std::vector<float>(values.begin(), values.begin() + 4), 2).counts.empty());
  EXPECT_TRUE(tool::make_histogram({}, 2).counts.empty());
}

TEST(Histogram, EqualValuesAreInTheFirstInterval) {
  EXPECT_EQ(tool::make_histogram(std::vector<float>{7, 7, 7}, 3).counts, (Counts{3, 0, 0}));
}

TEST(Histogram, TheWholeRangeOfFloatsHasIntervals) {
  const float most = std::numeric_limits<float>::max();
  const float least = -0.5F * most;
  EXPECT_EQ(tool::make_histogram(std::vector<float>{least, 0, most}, 3).counts, (Counts{1, 1, 1}));
}

}  // namespace
