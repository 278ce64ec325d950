// Containers with lazily zeroed memory.
#include <cstddef>
#include <gtest/gtest.h>
#include <limits>
#include <new>
#include <utility>
#include <vector>

#include "support/lazy_zero_allocator.h"
#include "tests/support/failing_memory.h"

namespace {

template <class T>
using LazyVector = std::vector<T, fld::LazyZeroAllocator<T>>;

TEST(LazyZeroAllocator, ElementsMadeByResizingAnEmptyContainerAreZero) {
  LazyVector<int> values;
  values.resize(100000);
  for (const int value : values) ASSERT_EQ(value, 0);
}

TEST(LazyZeroAllocator, ElementsWithAValueHaveIt) {
  const LazyVector<int> values(1000, 7);
  for (const int value : values) ASSERT_EQ(value, 7);
}

TEST(LazyZeroAllocator, ContainersOfItCanBeCopiedAndMoved) {
  LazyVector<double> values;
  values.resize(10);
  values[9] = 1.5;
  const LazyVector<double> copy = values;
  const LazyVector<double> moved = std::move(values);
  EXPECT_EQ(copy, moved);
  EXPECT_EQ(moved[9], 1.5);
}

TEST(LazyZeroAllocator, WithoutMemoryThrows) {
  fld::LazyZeroAllocator<int> allocator;
  const FailingMemory failing(1);
  EXPECT_THROW(allocator.allocate(10), std::bad_alloc);
}

TEST(LazyZeroAllocator, ACountTooLargeForItsBytesThrows) {
  fld::LazyZeroAllocator<double> allocator;
  // Its bytes would be 8 modulo 2^64, which there are. Volatile, so that the compiler does not see it.
  volatile size_t too_many = std::numeric_limits<size_t>::max() / sizeof(double) + 2;
  EXPECT_THROW(allocator.allocate(too_many), std::bad_alloc);
}

}  // namespace
