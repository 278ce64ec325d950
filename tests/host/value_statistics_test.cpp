#include "host/value_statistics.h"

#include "gtest/gtest.h"
#include <limits>
#include <vector>

#include "host/bounding_box.h"
#include "host/undefined_value.h"

namespace {

constexpr float kNan = std::numeric_limits<float>::quiet_NaN();

TEST(ValueStatistics, LeaveOutWhatIsUndefinedOrNoNumber) {
  host::ValueStatistics statistics;
  statistics.add(std::vector<float>{3, host::kUndefinedValue, -1, kNan, 4});
  EXPECT_EQ(statistics.minimum, -1);
  EXPECT_EQ(statistics.maximum, 4);
  EXPECT_EQ(statistics.mean(), 2);
  EXPECT_EQ(statistics.undefined, 1U);
  EXPECT_EQ(statistics.not_numbers, 1U);
}

TEST(ValueStatistics, AddUpParts) {
  host::ValueStatistics statistics;
  statistics.add(std::vector<float>{5});
  statistics.add(std::vector<float>{});
  statistics.add(std::vector<float>{7, 6});
  EXPECT_EQ(statistics.minimum, 5);
  EXPECT_EQ(statistics.maximum, 7);
  EXPECT_EQ(statistics.numbers, 3U);
}

TEST(ValueStatistics, WithoutNumbers) {
  host::ValueStatistics statistics;
  statistics.add(std::vector<float>{host::kUndefinedValue});
  EXPECT_FALSE(statistics.has_numbers());
}

host::Coordinates three_points() {
  host::Coordinates points;
  for (std::size_t axis = 0; axis < 3; ++axis) {
    points.axes[axis] = host::HostArray(3, 0);
    points.axes[axis].entries()[1] = static_cast<float>(axis);
    points.axes[axis].entries()[3] = -1;
  }
  return points;
}

TEST(BoundingBox, HoldsAllPoints) {
  const auto box = host::bounding_box(three_points());
  ASSERT_TRUE(box);
  EXPECT_EQ(box->lowest, (std::array<float, 3>{-1, -1, -1}));
  EXPECT_EQ(box->highest, (std::array<float, 3>{0, 1, 2}));
}

TEST(BoundingBox, NoneWithoutPoints) {
  EXPECT_FALSE(host::bounding_box(host::Coordinates()));
}

}  // namespace
