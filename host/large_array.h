// Arrays that a reader fills. Large ones have huge pages where the system gives them, because faulting in
// small pages takes as long as reading the data.
#pragma once

#include <cstddef>
#include <vector>

#include "support/lazy_zero_allocator.h"

namespace host {

// Zeroed bytes; nullptr when memory is exhausted.
struct LargeMemory {
  static void* take(std::size_t bytes);
  static void give_back(void* memory, std::size_t bytes);
};

// Entries are zero unless they are made with a value.
template <class T>
using LargeArray = std::vector<T, fld::LazyZeroAllocator<T, LargeMemory>>;

}  // namespace host
