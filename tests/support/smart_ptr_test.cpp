// The reference-counted owning pointer.
#include "support/smart_ptr.h"

#include <gtest/gtest.h>
#include <utility>
#include <vector>

namespace {

using fld::make_smart;
using fld::smart_ptr;

// Counts its destructions.
class Probe {
 public:
  explicit Probe(int& destroyed) : destroyed_(destroyed) {}
  ~Probe() { ++destroyed_; }
  Probe(const Probe&) = delete;
  Probe& operator=(const Probe&) = delete;

  int value = 0;
  smart_ptr<Probe> next;

 private:
  int& destroyed_;
};

TEST(SmartPtr, CopiedTwiceAndReleasedThreeTimesDeletesOnTheThirdRelease) {
  int destroyed = 0;
  auto first = make_smart<Probe>(destroyed);
  smart_ptr<Probe> second(first);
  smart_ptr<Probe> third(second);
  second.dec_ref();
  EXPECT_EQ(destroyed, 0);
  first.dec_ref();
  EXPECT_EQ(destroyed, 0);
  third.dec_ref();
  EXPECT_EQ(destroyed, 1);
}

TEST(SmartPtr, DestructorsReleaseLikewise) {
  int destroyed = 0;
  {
    const auto first = make_smart<Probe>(destroyed);
    {
      smart_ptr<Probe> second;
      second = first;
    }
    EXPECT_EQ(destroyed, 0);
  }
  EXPECT_EQ(destroyed, 1);
}

TEST(SmartPtr, ReleasingAgainDoesNothing) {
  int destroyed = 0;
  auto holder = make_smart<Probe>(destroyed);
  smart_ptr<Probe> other(holder);
  holder.dec_ref();
  holder.dec_ref();
  holder.dec_ref();
  EXPECT_EQ(destroyed, 0);
  EXPECT_EQ(holder.get(), nullptr);
  other.dec_ref();
  EXPECT_EQ(destroyed, 1);
}

TEST(SmartPtr, HoldsNothingAtFirst) {
  smart_ptr<Probe> empty;
  EXPECT_EQ(empty.get(), nullptr);
  EXPECT_FALSE(empty);
  empty.dec_ref();
  EXPECT_FALSE(empty);
}

TEST(SmartPtr, CopiesOfNothingAreNothing) {
  int destroyed = 0;
  const smart_ptr<Probe> empty;
  auto copy = make_smart<Probe>(destroyed);
  copy = empty;
  EXPECT_EQ(destroyed, 1);
  EXPECT_EQ(copy.get(), nullptr);
}

TEST(SmartPtr, CopiesShareTheObject) {
  int destroyed = 0;
  std::vector<smart_ptr<Probe>> holders(1, make_smart<Probe>(destroyed));
  holders.push_back(holders[0]);
  holders[0]->value = 7;
  EXPECT_TRUE(holders[1]);
  EXPECT_EQ(holders[1].get(), holders[0].get());
  EXPECT_EQ((*holders[1]).value, 7);
}

TEST(SmartPtr, AssignmentReleasesWhatWasHeld) {
  int destroyed_first = 0;
  int destroyed_second = 0;
  std::vector<smart_ptr<Probe>> holders;
  holders.push_back(make_smart<Probe>(destroyed_first));
  holders.push_back(make_smart<Probe>(destroyed_second));
  holders[0] = holders[1];
  EXPECT_EQ(destroyed_first, 1);
  EXPECT_EQ(destroyed_second, 0);
  EXPECT_EQ(holders[0].get(), holders[1].get());
}

TEST(SmartPtr, AssignmentToItselfKeepsTheObject) {
  int destroyed = 0;
  auto holder = make_smart<Probe>(destroyed);
  const smart_ptr<Probe>& same = holder;
  holder = same;
  EXPECT_EQ(destroyed, 0);
  ASSERT_TRUE(holder);
  EXPECT_EQ(holder->value, 0);
}

TEST(SmartPtr, CanBeAssignedFromInsideTheObjectThatItHolds) {
  int destroyed_outer = 0;
  int destroyed_inner = 0;
  auto holder = make_smart<Probe>(destroyed_outer);
  holder->next = make_smart<Probe>(destroyed_inner);
  Probe* inner = holder->next.get();
  holder = holder->next;
  EXPECT_EQ(destroyed_outer, 1);
  EXPECT_EQ(destroyed_inner, 0);
  EXPECT_EQ(holder.get(), inner);
}

TEST(SmartPtr, MovingHandsTheShareOver) {
  int destroyed = 0;
  auto first = make_smart<Probe>(destroyed);
  smart_ptr<Probe> second(std::move(first));
  EXPECT_FALSE(first);  // NOLINT(bugprone-use-after-move): that is what is tested
  second.dec_ref();
  EXPECT_EQ(destroyed, 1);
}

TEST(SmartPtr, AGrowingListKeepsItsObjects) {
  int destroyed = 0;
  {
    std::vector<smart_ptr<Probe>> list;
    for (int i = 0; i < 100; ++i) {
      list.push_back(make_smart<Probe>(destroyed));
      list.back()->value = i;
    }
    EXPECT_EQ(destroyed, 0);
    EXPECT_EQ(list[42]->value, 42);
    list.resize(40);
    EXPECT_EQ(destroyed, 60);
  }
  EXPECT_EQ(destroyed, 100);
}

}  // namespace
