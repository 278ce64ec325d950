#include "host/step_pairing.h"

#include "gtest/gtest.h"
#include <optional>
#include <vector>

namespace {

using Steps = std::vector<int>;
using Times = std::vector<float>;

TEST(StepPairing, OneGeometryServesAllSteps) {
  EXPECT_EQ(host::pair_steps({0, 1, 2}, {0}), (Steps{0, 0, 0}));
}

TEST(StepPairing, EveryStepHasItsOwn) {
  EXPECT_EQ(host::pair_steps({0, 1, 2}, {0, 1, 2}), (Steps{0, 1, 2}));
}

TEST(StepPairing, TheLastGeometryAtOrBeforeTheStep) {
  EXPECT_EQ(host::pair_steps({0, 1, 2, 3, 4}, {0, 2, 3}), (Steps{0, 0, 1, 2, 2}));
}

TEST(StepPairing, EqualAndFallingTimesKeepTheOrderOfTheFiles) {
  EXPECT_EQ(host::pair_steps({0, 0, 0}, {0, 0, 0}), (Steps{0, 1, 2}));
  EXPECT_EQ(host::pair_steps({5, 3, 4}, {5, 4}), (Steps{0, 0, 1}));
}

TEST(StepPairing, TimesThatDoNotMatchUpAreComparedOnly) {
  EXPECT_EQ(host::pair_steps({0, 1, 2}, {-0.5, 1.5}), (Steps{0, 0, 1}));
}

// The steps whose geometry is told by `steps`; the others are unknown.
host::StepOfGeometry told(const std::vector<std::optional<int>>& steps) {
  return [steps](int geometry_step) { return steps.at(static_cast<std::size_t>(geometry_step)); };
}

TEST(StepPairing, OfEqualTimesTheReaderTellsTheStep) {
  const Times times = {0, 0, 0, 0.001F};
  const Times geometry = {0, 0, 0.001F};
  EXPECT_EQ(host::pair_steps(times, geometry), (Steps{0, 1, 1, 2}));
  EXPECT_EQ(host::pair_steps(times, geometry, told({{}, 2, 3})), (Steps{0, 0, 1, 2}));
  EXPECT_EQ(host::pair_steps(times, geometry, told({{}, 1, 3})), (Steps{0, 1, 1, 2}));
  EXPECT_EQ(host::pair_steps(times, geometry, told({{}, {}, {}})), (Steps{0, 1, 1, 2}));
  EXPECT_EQ(host::pair_steps({1, 2, 2, 2, 2, 3}, {1, 2, 2, 3}, told({{}, 2, 4, {}})),
            (Steps{0, 0, 1, 1, 2, 3}));
}

TEST(StepPairing, AnAnswerThatLeavesNoRoomForTheOthersIsNoAnswer) {
  EXPECT_EQ(host::pair_steps({1, 2, 2, 2}, {1, 2, 2}, told({{}, 3, 3})), (Steps{0, 1, 1, 2}));
  EXPECT_EQ(host::pair_steps({1, 2, 2, 2}, {1, 2, 2}, told({{}, 0, 9})), (Steps{0, 1, 2, 2}));
}

TEST(StepPairing, AsksOnlyWhereTimesLeaveAChoice) {
  const host::StepOfGeometry never = [](int) -> std::optional<int> {
    ADD_FAILURE() << "asked";
    return {};
  };
  EXPECT_EQ(host::pair_steps({0, 0, 0}, {0}, never), (Steps{0, 0, 0}));
  EXPECT_EQ(host::pair_steps({0, 1, 1, 2}, {0, 1, 1, 2}, never), (Steps{0, 1, 2, 3}));
  EXPECT_EQ(host::pair_steps({0, 1, 2, 3}, {0, 2}, never), (Steps{0, 0, 1, 1}));
}

TEST(StepPairing, ATimeBehindTheLastDoesNotCount) {
  Times times = {0, 1, 1};
  times.pop_back();  // its memory still holds it
  const host::StepOfGeometry never = [](int) -> std::optional<int> {
    ADD_FAILURE() << "asked";
    return {};
  };
  EXPECT_EQ(host::pair_steps(times, {0, 1}, never), (Steps{0, 1}));
}

TEST(StepPairing, WithoutSteps) {
  EXPECT_EQ(host::pair_steps({}, {}), Steps{});
  EXPECT_EQ(host::pair_steps({1, 2}, {}), (Steps{0, 0}));
}

}  // namespace
