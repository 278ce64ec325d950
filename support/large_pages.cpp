#include "support/large_pages.h"

#include <cerrno>
#include <cstdint>
#include <sys/mman.h>

namespace fld {

namespace {

constexpr uintptr_t kSmallPage = 4096;
// Smaller blocks have few pages to save, and the allocator may use their pages again for something else.
constexpr size_t kWorthwhile = size_t{4} << 20;

}  // namespace

void advise_large_pages(void* block, size_t size) {
  if (block == nullptr || size < kWorthwhile) return;
  // Whole pages inside the block, so that the advice reaches nobody else's memory.
  const auto address = reinterpret_cast<uintptr_t>(block);
  const uintptr_t lead = (kSmallPage - address % kSmallPage) % kSmallPage;
  const int callers_errno = errno;
  madvise(static_cast<char*>(block) + lead, (size - lead) / kSmallPage * kSmallPage, MADV_HUGEPAGE);
  errno = callers_errno;
}

}  // namespace fld
