// A new list of blocks for every dataset, while blocks of the previous ones are still in use.
#include <cstring>
#include <gtest/gtest.h>
#include <string>

#include "support/errors.h"
#include "support/tracked_allocation.h"
#include "tests/support/empty_list.h"
#include "tests/support/thrown_message.h"

namespace {

using fld::cv_caloc;
using fld::cv_maloc;
using fld::cv_mfree;
using fld::cv_realoc;
using fld::set_memory;

using AllocationLists = EmptyList;
using AllocationListsDeathTest = EmptyList;

TEST_F(AllocationLists, ANewListIsEmpty) {
  void* held = cv_maloc(8, 1);
  EXPECT_NE(fld::memory, nullptr);
  set_memory();
  EXPECT_EQ(fld::memory, nullptr);
  cv_mfree(held);
  EXPECT_EQ(fld::memory, nullptr);
}

TEST_F(AllocationLists, BlocksOfTheListBeforeAreNoLeaks) {
  void* held = cv_maloc(8, 1);
  set_memory();
  cv_maloc(8, 2);
  EXPECT_EQ(leak_report(), "MEMORY LEAK DETECTED 2\n");
  cv_mfree(held);
}

TEST_F(AllocationLists, BlocksOfTheListBeforeStayWithTheirOwnersAfterTheLeakReport) {
  auto* held = static_cast<char*>(cv_maloc(6, 1));
  memcpy(held, "owned", 6);
  set_memory();
  cv_maloc(8, 2);
  leak_report();
  EXPECT_STREQ(held, "owned");
  cv_mfree(held);
}

TEST_F(AllocationLists, FreeingBlocksOfTheListBeforeLeavesTheNewListAlone) {
  void* before[3];
  for (int i = 0; i < 3; ++i) before[i] = cv_maloc(8, i);
  set_memory();
  cv_maloc(8, 11);
  cv_maloc(8, 12);
  cv_mfree(before[2]);
  cv_mfree(before[0]);
  cv_mfree(before[1]);
  EXPECT_EQ(leak_report(), "MEMORY LEAK DETECTED 12\nMEMORY LEAK DETECTED 11\n");
}

TEST_F(AllocationLists, BlocksOfTheListBeforeAreFreedInEveryOrder) {
  constexpr int kOrders[6][3] = {{0, 1, 2}, {0, 2, 1}, {1, 0, 2}, {1, 2, 0}, {2, 0, 1}, {2, 1, 0}};
  for (const auto& order : kOrders) {
    void* before[3];
    for (int i = 0; i < 3; ++i) before[i] = cv_maloc(8, i);
    set_memory();
    cv_maloc(8, 10);
    for (const int i : order) cv_mfree(before[i]);
    EXPECT_EQ(leak_report(), "MEMORY LEAK DETECTED 10\n");
  }
}

TEST_F(AllocationLists, SeveralListsMayHaveOwnersAtOnce) {
  void* first = cv_maloc(8, 1);
  set_memory();
  void* second = cv_maloc(8, 2);
  set_memory();
  set_memory();
  void* third = cv_maloc(8, 3);
  cv_maloc(8, 4);
  cv_mfree(second);
  cv_mfree(third);
  cv_mfree(first);
  EXPECT_EQ(leak_report(), "MEMORY LEAK DETECTED 4\n");
}

TEST_F(AllocationLists, ABlockOfTheListBeforeCanBeResized) {
  auto* held = static_cast<char*>(cv_maloc(6, 1));
  memcpy(held, "owned", 6);
  set_memory();
  cv_maloc(8, 2);
  held = static_cast<char*>(cv_realoc(held, 1000000));
  EXPECT_STREQ(held, "owned");
  EXPECT_EQ(leak_report(), "MEMORY LEAK DETECTED 2\n");
  cv_mfree(held);
}

TEST_F(AllocationLists, ManyBlocksOfTheListBeforeAreFreedWhileTheNewOneGrows) {
  // Half of a dataset's blocks is replaced by the next one's, and so on.
  constexpr int kBlocks = 100000;
  std::vector<void*> held(kBlocks);
  for (int round = 0; round < 3; ++round) {
    set_memory();
    for (void*& block : held) {
      cv_mfree(block);
      block = cv_caloc(1, 8, 7);
    }
  }
  for (void* block : held) cv_mfree(block);
  EXPECT_EQ(fld::memory, nullptr);
}

TEST_F(AllocationListsDeathTest, ABlockOfTheListBeforeFreedTwiceEndsTheProcess) {
  void* held = cv_maloc(8, 1);
  set_memory();
  void* other = cv_maloc(8, 2);
  cv_mfree(held);
  EXPECT_DEATH(cv_mfree(held), kUnknownBlock);
  cv_mfree(other);
}

TEST_F(AllocationListsDeathTest, ABlockFreedByTheLeakReportStaysUnknownInTheNextList) {
  void* block = cv_maloc(8, 1);
  leak_report();
  set_memory();
  EXPECT_DEATH(cv_mfree(block), kUnknownBlock);
}

}  // namespace
