// Ownership of blocks of the tracked allocator.
#pragma once

#include <cstddef>
#include <memory>

#include "support/tracked_allocation.h"

namespace fld {

struct TrackedFree {
  void operator()(void* block) const { cv_mfree(block); }
};

// An owned array of trivial values from cv_caloc.
template <class T>
using TrackedArray = std::unique_ptr<T[], TrackedFree>;

// `count` zeroed values under `tag`; empty for 0. Throws MemoryAllocException.
template <class T>
TrackedArray<T> make_tracked_array(size_t count, int tag) {
  return TrackedArray<T>(static_cast<T*>(cv_caloc(count, sizeof(T), tag)));
}

}  // namespace fld
