// Values are right in datasets with several region sets although the reader caches quantities by name alone.
#include "gtest/gtest.h"
#include <string>
#include <vector>

#include "host/session.h"
#include "tests/host/fake_reader.h"
#include "tests/host/fake_session.h"

namespace {

class Overset : public testing::Test {
 protected:
  Overset() : session(reader.library, capturing()) {}

  static host::SessionOptions capturing() {
    host::SessionOptions options;
    options.capture_diagnostics = true;
    return options;
  }

  void open(const char* name) {
    session.open(fake::file(name));
    session.variables();
    reader.forget_calls();
    reads_before_ = reader.reads();
  }

  // The value at a part's first node, which is the first node of its region set.
  float first_value(int variable, int part, int component = 0) {
    return session.values(variable, part, component).values().front();
  }
  int reads() const { return reader.reads() - reads_before_; }

  fake::Reader reader;
  host::Session session;

 private:
  int reads_before_ = 0;
};

constexpr int kWall0 = 1;
constexpr int kWall1 = 2;
constexpr int kFluid0 = 3;
constexpr int kFluid1 = 4;
constexpr int kWhole0 = 5;
constexpr int kWhole1 = 6;

TEST_F(Overset, TheSameQuantityInTwoRegionSetsGivesEachItsOwn) {
  open(fake::kTwoSets);
  session.select_step(1);
  EXPECT_EQ(first_value(fake::kPressure, kWall0), fake::pressure(1, 0, 0));
  EXPECT_EQ(first_value(fake::kPressure, kWall1), fake::pressure(1, 1, 0));
  EXPECT_EQ(first_value(fake::kVelocity, kFluid0, 1), fake::velocity(1, 0, 0, 1));
  EXPECT_EQ(first_value(fake::kVelocity, kFluid1, 1), fake::velocity(1, 1, 0, 1));
  EXPECT_EQ(first_value(fake::kPressure, kWhole0), fake::pressure(1, 0, 0));
  EXPECT_EQ(first_value(fake::kPressure, kWhole1), fake::pressure(1, 1, 0));
}

TEST_F(Overset, ARequestThatReadsNothingInBetweenDoesNotHideTheCache) {
  open(fake::kTwoSets);
  EXPECT_EQ(first_value(fake::kPressure, kWhole0), fake::pressure(0, 0, 0));
  session.values(fake::kUnwritten, kWhole1);
  EXPECT_EQ(first_value(fake::kPressure, kWhole1), fake::pressure(0, 1, 0));
}

TEST_F(Overset, DroppingTheCacheTouchesNoGeometry) {
  open(fake::kTwoSets);
  first_value(fake::kPressure, kWall0);
  first_value(fake::kPressure, kWall1);
  EXPECT_EQ(reader.calls("USERD_set_time_set_and_step"),
            (std::vector<std::string>{"USERD_set_time_set_and_step 2 1", "USERD_set_time_set_and_step 2 0"}));
}

TEST_F(Overset, ASingleStepIsLeftForANumberBehindIt) {
  open(fake::kOneStep);
  EXPECT_EQ(first_value(fake::kPressure, kWall0), fake::pressure(0, 0, 0));
  EXPECT_EQ(first_value(fake::kPressure, kWall1), fake::pressure(0, 1, 0));
  EXPECT_EQ(reader.calls("USERD_set_time_set_and_step"),
            (std::vector<std::string>{"USERD_set_time_set_and_step 2 1", "USERD_set_time_set_and_step 2 0"}));
}

TEST_F(Overset, ComponentsOfOnePartShareARead) {
  open(fake::kTwoSets);
  for (int component = 0; component < 3; ++component) first_value(fake::kVelocity, kWhole1, component);
  EXPECT_EQ(reads(), 1);
}

TEST_F(Overset, AllVariablesOfOnePartDropTheCacheOnce) {
  open(fake::kTwoSets);
  for (const int part : {kWhole0, kWhole1}) {
    first_value(fake::kPressure, part);
    first_value(fake::kHole, part);
    first_value(fake::kVelocity, part);
  }
  EXPECT_EQ(reader.calls("USERD_set_time_set_and_step").size(), 2U);
}

TEST_F(Overset, ADatasetWithOneRegionSetReadsAQuantityOnce) {
  open(fake::kOneSet);
  for (int part = 1; part <= 3; ++part) first_value(fake::kPressure, part);
  EXPECT_EQ(reads(), 1);
  EXPECT_TRUE(reader.calls("USERD_set_time_set_and_step").empty());
}

}  // namespace
