#include "host/large_array.h"

#include <cstdlib>
#include <sys/mman.h>

#include "support/huge_pages.h"

namespace host {
namespace {

// From here on a block is a mapping of its own. malloc would hand out blocks that were freed before, which
// would have to be cleared, and between which the heap has holes.
constexpr std::size_t kLarge = std::size_t{4} << 20;

}  // namespace

void* LargeMemory::take(std::size_t bytes) {
  if (bytes < kLarge) return std::calloc(bytes, 1);
  void* const memory = mmap(nullptr, bytes, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
  if (memory == MAP_FAILED) return nullptr;
  fld::take_huge_pages(memory, bytes);
  return memory;
}

void LargeMemory::give_back(void* memory, std::size_t bytes) {
  if (bytes < kLarge) {
    std::free(memory);
  } else {
    munmap(memory, bytes);
  }
}

}  // namespace host
