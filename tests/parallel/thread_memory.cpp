#include "tests/parallel/thread_memory.h"

#include <algorithm>
#include <cstdlib>
#include <malloc.h>
#include <new>

namespace parallel_test {
namespace {

thread_local std::int64_t held = 0;
thread_local std::int64_t held_at_start = 0;
thread_local std::int64_t peak = 0;

}  // namespace

void forget_peak_of_thread() {
  peak = held_at_start = held;
}

std::int64_t peak_of_thread() {
  return peak - held_at_start;
}

void* allocate(std::size_t size) {
  void* const memory = std::malloc(size);
  if (memory == nullptr) throw std::bad_alloc();
  held += static_cast<std::int64_t>(malloc_usable_size(memory));
  peak = std::max(peak, held);
  return memory;
}

void release(void* memory) {
  if (memory != nullptr) held -= static_cast<std::int64_t>(malloc_usable_size(memory));
  std::free(memory);
}

}  // namespace parallel_test

// The other forms of new and delete, but for those with an alignment, call these.
void* operator new(std::size_t size) {
  return parallel_test::allocate(size);
}

void operator delete(void* memory) noexcept {
  parallel_test::release(memory);
}

void operator delete(void* memory, std::size_t /*size*/) noexcept {
  parallel_test::release(memory);
}
