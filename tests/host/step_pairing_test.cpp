#include "host/step_pairing.h"

#include "gtest/gtest.h"
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

TEST(StepPairing, WithoutSteps) {
  EXPECT_EQ(host::pair_steps({}, {}), Steps{});
  EXPECT_EQ(host::pair_steps({1, 2}, {}), (Steps{0, 0}));
}

}  // namespace
