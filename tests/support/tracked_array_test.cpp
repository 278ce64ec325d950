// Arrays of the tracked allocator that free themselves.
#include "support/tracked_array.h"

#include <gtest/gtest.h>

#include "support/errors.h"
#include "tests/support/empty_list.h"
#include "tests/support/failing_memory.h"

namespace {

using TrackedArrays = EmptyList;

TEST_F(TrackedArrays, AreZeroedAndListedUnderTheirTag) {
  const auto values = fld::make_tracked_array<int>(3, 1100102);
  EXPECT_EQ(values[0], 0);
  EXPECT_EQ(values[1], 0);
  EXPECT_EQ(values[2], 0);
  EXPECT_NE(fld::memory, nullptr);
}

TEST_F(TrackedArrays, FreeThemselves) {
  { const auto values = fld::make_tracked_array<double>(3, 1100102); }
  EXPECT_EQ(fld::memory, nullptr);
}

TEST_F(TrackedArrays, OfNoValuesAreNull) {
  const auto values = fld::make_tracked_array<double>(0, 1100102);
  EXPECT_EQ(values.get(), nullptr);
  EXPECT_EQ(fld::memory, nullptr);
}

TEST_F(TrackedArrays, HandTheirBlockOver) {
  double* block = fld::make_tracked_array<double>(3, 1100142).release();
  EXPECT_NE(fld::memory, nullptr);
  block[2] = 1.5;
  EXPECT_EQ(leak_report(), "MEMORY LEAK DETECTED 1100142\n");
}

TEST_F(TrackedArrays, ThrowWithoutMemory) {
  const FailingMemory failing(2);
  EXPECT_THROW(fld::make_tracked_array<int>(3, 1100102), fld::MemoryAllocException);
}

}  // namespace
