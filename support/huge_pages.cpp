#include "support/huge_pages.h"

#include <cerrno>
#include <cstdint>
#include <ctime>
#include <sys/mman.h>

namespace fld {

namespace {

constexpr uintptr_t kHugePage = uintptr_t{2} << 20;
// Smaller blocks gain little, and malloc may reuse their pages for other blocks.
constexpr size_t kMinimumSize = size_t{4} << 20;
// About the time in which as many small pages are faulted in. Fast huge pages take a tenth of it, slow ones
// five times.
constexpr int64_t kSlow = 1'000'000;  // ns
// One slow page may be an accident; two tell that more would follow.
constexpr int kSlowInTurn = 2;
// Then huge pages are left alone for a while, so that trying them costs little.
constexpr int64_t kPause = 1'000'000'000;  // ns

int64_t nanoseconds(clockid_t clock) {
  timespec time = {};
  clock_gettime(clock, &time);
  return time.tv_sec * int64_t{1'000'000'000} + time.tv_nsec;
}

// Makes the system provide the page. Returns the processor time that it took; the elapsed time would tell of
// other processes as well.
int64_t touch(char* page) {
  const int64_t start = nanoseconds(CLOCK_THREAD_CPUTIME_ID);
  __atomic_fetch_or(page, 0, __ATOMIC_RELAXED);
  return nanoseconds(CLOCK_THREAD_CPUTIME_ID) - start;
}

int64_t paused_until = 0;  // ns, of the monotonic clock

}  // namespace

void take_huge_pages(void* block, size_t size) {
  if (block == nullptr || size < kMinimumSize) return;
  if (paused_until != 0 && nanoseconds(CLOCK_MONOTONIC) < paused_until) return;
  const int saved_errno = errno;
  char* const begin = static_cast<char*>(block);
  char* const end = begin + size;
  char* page = begin + (kHugePage - reinterpret_cast<uintptr_t>(block) % kHugePage) % kHugePage;
  int slow_in_turn = 0;
  for (; end - page >= static_cast<ptrdiff_t>(kHugePage); page += kHugePage) {
    if (madvise(page, kHugePage, MADV_HUGEPAGE) != 0) break;
    slow_in_turn = touch(page) > kSlow ? slow_in_turn + 1 : 0;
    if (slow_in_turn == kSlowInTurn) {
      paused_until = nanoseconds(CLOCK_MONOTONIC) + kPause;
      break;
    }
  }
  errno = saved_errno;
}

}  // namespace fld
