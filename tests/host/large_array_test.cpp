// Arrays of any size, the threads that fill them, and their forms with one tuple behind the other.
#include "host/large_array.h"

#include "gtest/gtest.h"
#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <limits>
#include <new>
#include <utility>
#include <vector>

#include "host/thread_ranges.h"
#include "host/tuples.h"
#include "host/undefined_value.h"

namespace {

constexpr float kNan = std::numeric_limits<float>::quiet_NaN();

// Below and above the size from which an array is a mapping of its own.
class LargeArray : public testing::TestWithParam<std::size_t> {};
INSTANTIATE_TEST_SUITE_P(Sizes, LargeArray, testing::Values(1, 1000, (1U << 20) - 1, 1U << 20, 3'000'001));

TEST_P(LargeArray, HasZerosEvenWhereOthersWereBefore) {
  { const host::LargeArray<int> others(GetParam(), -1); }
  const host::LargeArray<int> values(GetParam());
  EXPECT_EQ(std::count(values.begin(), values.end(), 0), static_cast<std::ptrdiff_t>(values.size()));
}

TEST_P(LargeArray, HasTheValueThatIsAskedForAndKeepsItsPlaceWhenMoved) {
  host::LargeArray<float> values(GetParam(), 2.5F);
  EXPECT_EQ(values.back(), 2.5F);
  const float* const place = values.data();
  const host::LargeArray<float> moved = std::move(values);
  EXPECT_EQ(moved.data(), place);
  EXPECT_EQ(moved.front(), 2.5F);
}

// malloc's own mappings do not begin with a page.
TEST(LargeArrays, BeginWithAPageFrom4MebibytesOn) {
  constexpr std::size_t kLarge = std::size_t{4} << 20;
  for (const std::size_t bytes : {kLarge - 1, kLarge, kLarge + 1}) {
    void* const memory = host::LargeMemory::take(bytes);
    ASSERT_NE(memory, nullptr);
    EXPECT_EQ(reinterpret_cast<std::uintptr_t>(memory) % 4096 == 0, bytes >= kLarge) << bytes;
    host::LargeMemory::give_back(memory, bytes);
  }
}

TEST(LargeArrays, ThatTheMachineCannotHoldThrow) {
  volatile std::size_t too_many =
      std::numeric_limits<std::size_t>::max() / 16;  // not for the compiler to see
  EXPECT_THROW(host::LargeArray<int>(std::size_t{too_many}), std::bad_alloc);
}

TEST(ThreadRanges, CoverEveryElementOnce) {
  for (const std::size_t count : {std::size_t{0}, std::size_t{1}, std::size_t{1'000'003}}) {
    std::vector<std::uint8_t> visits(count);
    host::for_ranges(count, 64, [&](std::size_t begin, std::size_t end) {
      for (std::size_t i = begin; i < end; ++i) ++visits[i];
    });
    EXPECT_EQ(visits, std::vector<std::uint8_t>(count, 1));
  }
}

host::HostArray array_of(const std::vector<float>& values) {
  host::HostArray made(values.size());
  std::copy(values.begin(), values.end(), made.entries() + 1);
  return made;
}

TEST(Tuples, OfCoordinatesAreNodeAfterNode) {
  const host::Coordinates coordinates{array_of({1, 2}), array_of({3, 4}),
                                      array_of({5, host::kUndefinedValue})};
  std::array<double, 6> points{};
  host::put_points(coordinates, points.data());
  EXPECT_EQ(points, (std::array<double, 6>{1, 3, 5, 2, 4, static_cast<double>(host::kUndefinedValue)}));
}

TEST(Tuples, OfAVectorHaveNanWhereAComponentIsUndefined) {
  std::vector<host::HostArray> components;
  components.push_back(array_of({1, 2}));
  components.push_back(array_of({3, host::kUndefinedValue}));
  components.push_back(array_of({5, 6.5F}));
  std::array<double, 6> tuples{};
  host::put_tuples(components, tuples.data());
  EXPECT_TRUE(std::isnan(tuples[4]));
  tuples[4] = 0;
  EXPECT_EQ(tuples, (std::array<double, 6>{1, 3, 5, 2, 0, 6.5}));
}

TEST(Tuples, OfAScalarAreItsValues) {
  std::vector<host::HostArray> component;
  component.push_back(array_of({4, host::kUndefinedValue, 6}));
  std::array<float, 3> tuples{};
  host::put_tuples(component, tuples.data());
  EXPECT_EQ(tuples[0], 4);
  EXPECT_TRUE(std::isnan(tuples[1]));
  EXPECT_EQ(tuples[2], 6);
}

TEST(Values, HaveNanWhereTheyAreUndefinedInTheirOwnPlaceToo) {
  std::vector<float> values = {1, host::kUndefinedValue, kNan, -std::numeric_limits<float>::max()};
  host::put_values(values, values.data());
  EXPECT_EQ(values[0], 1);
  for (std::size_t i = 1; i < values.size(); ++i) EXPECT_TRUE(std::isnan(values[i])) << i;
}

TEST(HostArray, IsFilledAtAnySize) {
  for (const std::size_t count : {std::size_t{0}, std::size_t{5}, std::size_t{3'000'000}}) {
    const host::HostArray array(count, 2.5F);
    EXPECT_EQ(array.values().size(), count);
    EXPECT_EQ(std::count(array.values().begin(), array.values().end(), 2.5F),
              static_cast<std::ptrdiff_t>(count));
  }
}

TEST(HostArray, HandsOverItsMemoryWithTheFirstValueInEntryOne) {
  host::HostArray array = array_of({4, 5});
  const float* const place = array.entries();
  const host::LargeArray<float> memory = std::move(array).release();
  EXPECT_EQ(memory.data(), place);
  EXPECT_EQ(memory, (host::LargeArray<float>{0, 4, 5}));
}

}  // namespace
