// operator new for a program with injected allocation failures: it follows the same plan as malloc.
#include <cstdlib>
#include <new>

#include "tests/support/failing_memory.h"

namespace {

// malloc counts itself; aligned_alloc is counted here.
void* request(std::size_t size) {
  void* block = std::malloc(size);
  if (block == nullptr) throw std::bad_alloc();
  return block;
}

void* request(std::size_t size, std::align_val_t alignment) {
  const auto bytes = static_cast<std::size_t>(alignment);
  void* block = FailingMemory::plan().strikes()
                    ? nullptr
                    : std::aligned_alloc(bytes, (size + bytes - 1) / bytes * bytes);
  if (block == nullptr) throw std::bad_alloc();
  return block;
}

}  // namespace

#define REPLACES __attribute__((visibility("default")))

REPLACES void* operator new(std::size_t size) {
  return request(size);
}
REPLACES void* operator new[](std::size_t size) {
  return request(size);
}
REPLACES void* operator new(std::size_t size, const std::nothrow_t& /*tag*/) noexcept {
  return std::malloc(size);
}
REPLACES void* operator new[](std::size_t size, const std::nothrow_t& /*tag*/) noexcept {
  return std::malloc(size);
}
REPLACES void* operator new(std::size_t size, std::align_val_t alignment) {
  return request(size, alignment);
}
REPLACES void* operator new[](std::size_t size, std::align_val_t alignment) {
  return request(size, alignment);
}
REPLACES void operator delete(void* block) noexcept {
  std::free(block);
}
REPLACES void operator delete[](void* block) noexcept {
  std::free(block);
}
REPLACES void operator delete(void* block, std::size_t /*size*/) noexcept {
  std::free(block);
}
REPLACES void operator delete[](void* block, std::size_t /*size*/) noexcept {
  std::free(block);
}
REPLACES void operator delete(void* block, std::align_val_t /*alignment*/) noexcept {
  std::free(block);
}
REPLACES void operator delete[](void* block, std::align_val_t /*alignment*/) noexcept {
  std::free(block);
}
REPLACES void operator delete(void* block, std::size_t /*size*/, std::align_val_t /*alignment*/) noexcept {
  std::free(block);
}
REPLACES void operator delete[](void* block, std::size_t /*size*/, std::align_val_t /*alignment*/) noexcept {
  std::free(block);
}
