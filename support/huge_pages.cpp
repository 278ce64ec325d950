#include "support/huge_pages.h"

#include <cerrno>
#include <cstdint>
#include <sys/mman.h>

namespace fld {

namespace {

constexpr uintptr_t kPage = 4096;
// Smaller blocks gain little, and malloc may reuse their pages for other blocks.
constexpr size_t kMinimumSize = size_t{4} << 20;

}  // namespace

void advise_huge_pages(void* block, size_t size) {
  if (block == nullptr || size < kMinimumSize) return;
  // Only whole pages within the block.
  const auto address = reinterpret_cast<uintptr_t>(block);
  const uintptr_t lead = (kPage - address % kPage) % kPage;
  const int saved_errno = errno;
  madvise(static_cast<char*>(block) + lead, (size - lead) / kPage * kPage, MADV_HUGEPAGE);
  errno = saved_errno;
}

}  // namespace fld
