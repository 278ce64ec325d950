#include "fuzz/heap_limit.h"

#include <algorithm>

// The fuzzers' compiler; g++ comes without the header of AddressSanitizer's allocator.
#ifdef __has_feature
#if __has_feature(address_sanitizer)
#define FUZZ_KNOWS_HEAP
#endif
#endif

#ifdef FUZZ_KNOWS_HEAP
#include <sanitizer/allocator_interface.h>
#endif

namespace fuzz {

#ifdef FUZZ_KNOWS_HEAP

namespace {

long held = 0;  // bytes since the watch began
long most = 0;  // the largest that it was
long limit = 0;

void on_malloc(const volatile void* /*block*/, std::size_t size) {
  held += static_cast<long>(size);
  most = std::max(most, held);
}

void on_free(const volatile void* block) {
  if (block != nullptr) held -= static_cast<long>(__sanitizer_get_allocated_size(const_cast<void*>(block)));
}

}  // namespace

void watch_heap(std::size_t bytes) {
  static const bool installed = __sanitizer_install_malloc_and_free_hooks(on_malloc, on_free) != 0;
  held = most = 0;
  limit = installed ? static_cast<long>(bytes) : 0;
}

bool end_watching_heap() {
  return limit == 0 || most <= limit;
}

#else

void watch_heap(std::size_t /*bytes*/) {}

bool end_watching_heap() {
  return true;
}

#endif

}  // namespace fuzz
