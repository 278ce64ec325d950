// The tracked allocator when memory runs out.
#include <cstdint>
#include <cstdlib>
#include <functional>
#include <gtest/gtest.h>
#include <limits>
#include <string>
#include <vector>

#include "support/errors.h"
#include "support/tracked_allocation.h"
#include "tests/support/empty_list.h"
#include "tests/support/failing_memory.h"
#include "tests/support/thrown_message.h"

namespace {

using fld::cv_caloc;
using fld::cv_maloc;
using fld::cv_mfree;
using fld::cv_realoc;
using fld::MemoryAllocException;

using AllocationFailures = EmptyList;

// The first allocation makes three requests: the node, the block and the hash table.
constexpr int kRequestsOfTheFirst = 3;

void expect_failures(const std::function<void*()>& allocate) {
  for (int request = 1; request <= kRequestsOfTheFirst; ++request) {
    const FailingMemory failing(request);
    EXPECT_EQ(thrown_message<MemoryAllocException>([&] { allocate(); }), "NOT ENOUGH MEMORY")
        << "request " << request;
    EXPECT_TRUE(FailingMemory::has_failed());
    EXPECT_EQ(fld::memory, nullptr) << "request " << request;
  }
}

TEST_F(AllocationFailures, CvMalocThrowsWhicheverRequestFails) {
  expect_failures([] { return cv_maloc(100, 1); });
}

TEST_F(AllocationFailures, CvCalocThrowsWhicheverRequestFails) {
  expect_failures([] { return cv_caloc(10, 10, 1); });
}

TEST_F(AllocationFailures, TheAllocatorGoesOnAfterwards) {
  void* before = cv_maloc(8, 1);
  for (int request = 1; request <= 2; ++request) {
    const FailingMemory failing(request);
    EXPECT_THROW(cv_maloc(100, 2), MemoryAllocException);
  }
  cv_maloc(8, 3);
  cv_mfree(before);
  EXPECT_EQ(leak_report(), "MEMORY LEAK DETECTED 3\n");
}

TEST_F(AllocationFailures, ACountAndSizeTooLargeForTheirProductThrow) {
  const size_t half = std::numeric_limits<size_t>::max() / 2;
  EXPECT_EQ(thrown_message<MemoryAllocException>([&] { cv_caloc(half, 4, 1); }), "NOT ENOUGH MEMORY");
  EXPECT_EQ(thrown_message<MemoryAllocException>([&] { cv_caloc(4, half, 1); }), "NOT ENOUGH MEMORY");
  EXPECT_EQ(fld::memory, nullptr);
}

TEST_F(AllocationFailures, MoreThanTheMachineHasThrows) {
  const size_t half = std::numeric_limits<size_t>::max() / 2;
  EXPECT_EQ(thrown_message<MemoryAllocException>([&] { cv_maloc(half, 1); }), "NOT ENOUGH MEMORY");
  EXPECT_EQ(fld::memory, nullptr);
}

TEST_F(AllocationFailures, BlocksAreStillFoundWhenNoLargerTableCanBeMade) {
  // Some of these allocations try to grow the table; all fail.
  std::vector<void*> blocks = {cv_maloc(8, 0)};
  int refused = 0;
  for (int i = 1; i < 2000; ++i) {
    const FailingMemory failing(3);
    blocks.push_back(cv_maloc(8, i));
    refused += FailingMemory::has_failed() ? 1 : 0;
  }
  EXPECT_GT(refused, 0);
  for (void* block : blocks) cv_mfree(block);
  EXPECT_EQ(fld::memory, nullptr);
}

TEST_F(AllocationFailures, AFailedResizingGivesNullAndForgetsTheBlock) {
  void* block = cv_maloc(8, 1);
  cv_maloc(8, 2);
  {
    const FailingMemory failing(1);
    EXPECT_EQ(cv_realoc(block, 100), nullptr);
  }
  EXPECT_EQ(thrown_message<MemoryAllocException>([&] { cv_realoc(block, 100); }),
            "ATTEMPT TO REALLOC UNKNOWN POINTER");
  EXPECT_EQ(leak_report(), "MEMORY LEAK DETECTED 2\n");
  free(block);  // still there, as the C library has it
}

}  // namespace
