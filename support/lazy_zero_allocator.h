// An allocator for containers of plain values whose memory is zeroed by the system when it is first touched,
// so that a large table costs nothing until it is used.
#pragma once

#include <cstdlib>
#include <new>
#include <utility>

namespace fld {

// For containers that are sized once: elements made by resize() on an empty container are zero.
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

  // Elements without a value stay as they came from the system.
  template <class U>
  void construct(U*) noexcept {}
  template <class U, class... Args>
  void construct(U* place, Args&&... args) {
    ::new (static_cast<void*>(place)) U(std::forward<Args>(args)...);
  }

  bool operator==(const LazyZeroAllocator&) const { return true; }
};

}  // namespace fld
