#include "support/huge_pages.h"

#include <atomic>
#include <cerrno>
#include <cstdint>
#include <sys/mman.h>

#include "support/pause.h"
#include "support/worker_threads.h"

namespace fld {

namespace {

constexpr size_t kHugePage = size_t{2} << 20;
// Smaller blocks gain little, and malloc may reuse their pages for other blocks.
constexpr size_t kMinimumSize = size_t{4} << 20;
// About the time in which as many small pages are faulted in. Fast huge pages take a tenth of it, slow ones
// five times.
constexpr int64_t kSlow = 1'000'000;  // ns
// One slow page may be an accident; two tell that more would follow.
constexpr int kSlowInTurn = 2;

// Makes the system provide the page. Returns the processor time that it took; the elapsed time would tell of
// other processes as well.
int64_t touch(char* page) {
  const int64_t start = nanoseconds(CLOCK_THREAD_CPUTIME_ID);
  __atomic_fetch_or(page, 0, __ATOMIC_RELAXED);
  return nanoseconds(CLOCK_THREAD_CPUTIME_ID) - start;
}

Pause pause_after_slow_pages;

// Touches pages while they come fast, to this thread and to the others. Returns the end of those touched.
char* touch_while_fast(char* page, const char* end, std::atomic<int>& slow_in_turn) {
  for (; page < end && slow_in_turn < kSlowInTurn; page += kHugePage) {
    if (touch(page) > kSlow) {
      ++slow_in_turn;
    } else {
      slow_in_turn = 0;
    }
  }
  return page;
}

}  // namespace

void take_huge_pages(void* block, size_t size) {
  if (block == nullptr || size < kMinimumSize || pause_after_slow_pages.is_on()) return;
  const int saved_errno = errno;
  const size_t lead = (kHugePage - reinterpret_cast<uintptr_t>(block) % kHugePage) % kHugePage;
  char* const first = static_cast<char*>(block) + lead;
  const auto pages = static_cast<int64_t>((size - lead) / kHugePage);
  if (madvise(first, static_cast<size_t>(pages) * kHugePage, MADV_HUGEPAGE) == 0) {
    std::atomic<int> slow_in_turn = 0;
    for_ranges(pages, kHugePage, [first, &slow_in_turn](int64_t begin, int64_t end) {
      char* const range_end = first + static_cast<size_t>(end) * kHugePage;
      char* const rest =
          touch_while_fast(first + static_cast<size_t>(begin) * kHugePage, range_end, slow_in_turn);
      if (rest < range_end) madvise(rest, static_cast<size_t>(range_end - rest), MADV_NOHUGEPAGE);
    });
    if (slow_in_turn >= kSlowInTurn) pause_after_slow_pages.begin();
  }
  errno = saved_errno;
}

}  // namespace fld
