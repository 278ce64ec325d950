// An allocator for containers of trivial values. The memory comes from calloc, so the kernel zeroes a page
// when it is first touched and an unused table costs nothing.
#pragma once

#include <cstdlib>
#include <new>
#include <utility>

namespace fld {

// For containers that are sized once: resize() on an empty container gives zeroed elements.
template <class T>
struct LazyZeroAllocator {
  using value_type = T;

  LazyZeroAllocator() = default;
  template <class U>
  explicit LazyZeroAllocator(const LazyZeroAllocator<U>&) {}

  T* allocate(size_t n) {
    auto* memory = static_cast<T*>(calloc(n, sizeof(T)));
    if (memory == nullptr) throw std::bad_alloc();
    return memory;
  }
  void deallocate(T* memory, size_t) { free(memory); }

  // Default-constructed elements keep calloc's zeros.
  template <class U>
  void construct(U*) noexcept {}
  template <class U, class... Args>
  void construct(U* place, Args&&... args) {
    ::new (static_cast<void*>(place)) U(std::forward<Args>(args)...);
  }

  bool operator==(const LazyZeroAllocator&) const { return true; }
};

}  // namespace fld
