#include "tests/faults/memory_meter.h"

#include <algorithm>
#include <atomic>
#include <cerrno>

namespace {

std::atomic<std::ptrdiff_t> held_bytes = 0;
std::atomic<std::ptrdiff_t> most_bytes = 0;

void count(std::ptrdiff_t bytes) {
  const std::ptrdiff_t now = held_bytes += bytes;
  if (now > most_bytes) most_bytes = now;
}

}  // namespace

// clang has its own way to detect AddressSanitizer.
#ifdef __has_feature
#if __has_feature(address_sanitizer) && !defined(__SANITIZE_ADDRESS__)
#define __SANITIZE_ADDRESS__
#endif
#endif

#ifdef __SANITIZE_ADDRESS__

// g++ has no header for these AddressSanitizer functions.
// NOLINTBEGIN(bugprone-reserved-identifier)
extern "C" {
int __sanitizer_install_malloc_and_free_hooks(void (*malloc_hook)(const volatile void*, std::size_t),
                                              void (*free_hook)(const volatile void*));
std::size_t __sanitizer_get_allocated_size(const volatile void* block);
}
// NOLINTEND(bugprone-reserved-identifier)

namespace {

void count_request(const volatile void* /*block*/, std::size_t size) {
  count(static_cast<std::ptrdiff_t>(size));
}
void count_release(const volatile void* block) {
  if (block != nullptr) count(-static_cast<std::ptrdiff_t>(__sanitizer_get_allocated_size(block)));
}
const int installed = __sanitizer_install_malloc_and_free_hooks(count_request, count_release);

}  // namespace

#else

#include <malloc.h>

namespace {

void* counted(void* block) {
  if (block != nullptr) count(static_cast<std::ptrdiff_t>(malloc_usable_size(block)));
  return block;
}

void uncount(void* block) {
  if (block != nullptr) count(-static_cast<std::ptrdiff_t>(malloc_usable_size(block)));
}

}  // namespace

// Replaces the C library's allocation functions by counting wrappers.
// NOLINTBEGIN(bugprone-reserved-identifier,readability-inconsistent-declaration-parameter-name)
extern "C" {
void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* block, std::size_t size);
void* __libc_memalign(std::size_t alignment, std::size_t size);
void __libc_free(void* block);

#define METERED __attribute__((visibility("default")))

METERED void* malloc(std::size_t size) noexcept {
  return counted(__libc_malloc(size));
}
METERED void* calloc(std::size_t number, std::size_t size) noexcept {
  return counted(__libc_calloc(number, size));
}
METERED void* realloc(void* block, std::size_t size) noexcept {
  const auto before = static_cast<std::ptrdiff_t>(block != nullptr ? malloc_usable_size(block) : 0);
  void* moved = __libc_realloc(block, size);
  if (moved == nullptr && size != 0) return nullptr;
  count(-before);
  return counted(moved);
}
METERED void free(void* block) noexcept {
  uncount(block);
  __libc_free(block);
}
METERED void* memalign(std::size_t alignment, std::size_t size) noexcept {
  return counted(__libc_memalign(alignment, size));
}
METERED void* aligned_alloc(std::size_t alignment, std::size_t size) noexcept {
  return counted(__libc_memalign(alignment, size));
}
METERED int posix_memalign(void** block, std::size_t alignment, std::size_t size) noexcept {
  *block = counted(__libc_memalign(alignment, size));
  return *block != nullptr ? 0 : ENOMEM;
}
}
// NOLINTEND(bugprone-reserved-identifier,readability-inconsistent-declaration-parameter-name)

#endif

namespace faults {

MemoryMeter::MemoryMeter() : start_(held_bytes) {
  most_bytes = start_;
}
std::ptrdiff_t MemoryMeter::peak() const {
  return most_bytes - start_;
}
std::ptrdiff_t MemoryMeter::held() const {
  return held_bytes - start_;
}

}  // namespace faults
