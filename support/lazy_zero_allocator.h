// An allocator for containers of trivial values. The memory comes from calloc, so the kernel zeroes a page
// when it is first touched and an unused table costs nothing.
#pragma once

#include <cstdlib>
#include <limits>
#include <new>
#include <utility>

namespace fld {

// Memory from calloc; nullptr when there is none.
struct ZeroedHeap {
  static void* take(size_t bytes) { return calloc(bytes, 1); }
  static void give_back(void* memory, size_t) { free(memory); }
};

// For containers that are sized once: resize() on an empty container gives zeroed elements. Another `Memory`
// takes and gives back zeroed bytes in its own way.
template <class T, class Memory = ZeroedHeap>
struct LazyZeroAllocator {
  using value_type = T;

  LazyZeroAllocator() = default;
  template <class U>
  explicit LazyZeroAllocator(const LazyZeroAllocator<U, Memory>&) {}

  T* allocate(size_t n) {
    void* const memory =
        n <= std::numeric_limits<size_t>::max() / sizeof(T) ? Memory::take(n * sizeof(T)) : nullptr;
    if (memory == nullptr) throw std::bad_alloc();
    return static_cast<T*>(memory);
  }
  void deallocate(T* memory, size_t n) { Memory::give_back(memory, n * sizeof(T)); }

  // Default-constructed elements keep the zeros.
  template <class U>
  void construct(U*) noexcept {}
  template <class U, class... Args>
  void construct(U* place, Args&&... args) {
    ::new (static_cast<void*>(place)) U(std::forward<Args>(args)...);
  }

  bool operator==(const LazyZeroAllocator&) const { return true; }
};

}  // namespace fld
