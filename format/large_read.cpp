#include "format/large_read.h"

#include <algorithm>
#include <atomic>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <unistd.h>

#include "support/byte_order.h"
#include "support/worker_threads.h"

namespace fld {

namespace {

// Bytes of one read. Swapping finds them in the cache.
constexpr size_t kRead = size_t{256} << 10;
// Threads fill `out` by huge pages, so that no two of them touch the same one first. Neighbouring ranges are
// read at about the same time, which the system's read-ahead needs.
constexpr int64_t kHugePage = int64_t{2} << 20;

struct Free {
  void operator()(char* block) const { free(block); }
};

class LargeRead {
 public:
  LargeRead(int descriptor, const ArrayLayout& array, void* out)
      : descriptor_(descriptor),
        array_(array),
        out_(static_cast<char*>(out)),
        lead_(-static_cast<int64_t>(reinterpret_cast<uintptr_t>(out) % kHugePage) & (kHugePage - 1)) {}

  // Reads ranges until none is left, or one failed.
  void read_ranges() {
    const std::unique_ptr<char, Free> buffer(static_cast<char*>(malloc(kRead)));
    if (buffer == nullptr) {
      failed_ = true;
      return;
    }
    while (!failed_) {
      const int64_t range = next_.fetch_add(1, std::memory_order_relaxed);
      const int64_t begin = range == 0 ? 0 : border(range);
      if (begin >= array_.count) return;
      if (!read(begin, border(range + 1), buffer.get())) failed_ = true;
    }
  }

  bool failed() const { return failed_; }

 private:
  // First element of a range. The first range is what lies before the first border between huge pages.
  int64_t border(int64_t range) const {
    return std::min((lead_ + (range - 1) * kHugePage) / array_.width, array_.count);
  }

  // Reads the elements from `begin` to `end` - 1 with the markers between them.
  bool read(int64_t begin, int64_t end, char* buffer) const {
    const auto width = static_cast<size_t>(array_.width);
    for (int64_t i = begin; i < end;) {
      const int64_t from = array_.offset_of(i);
      const int64_t rest = array_.offset_of(end - 1) + array_.width - from;
      const size_t bytes = std::min(kRead, static_cast<size_t>(rest));
      if (pread(descriptor_, buffer, bytes, from) != static_cast<ssize_t>(bytes)) return false;
      while (i < end) {
        const int64_t position = array_.offset_of(i) - from;
        const int64_t given = (static_cast<int64_t>(bytes) - position) / array_.width;
        const int64_t n = std::min({array_.together_from(i), end - i, given});
        if (n <= 0) break;
        cnvt_copy(out_ + static_cast<size_t>(i) * width, buffer + position, width, static_cast<size_t>(n));
        i += n;
      }
    }
    return true;
  }

  const int descriptor_;
  const ArrayLayout& array_;
  char* const out_;
  const int64_t lead_;  // bytes before the first border between huge pages
  std::atomic<int64_t> next_ = 0;
  std::atomic<bool> failed_ = false;
};

}  // namespace

bool read_by_threads(FILE* stream, const ArrayLayout& array, int threads, void* out) {
  LargeRead large_read(fileno(stream), array, out);
  run_in_threads(threads, [&](int) { large_read.read_ranges(); });
  const off_t end = array.offset_of(array.count - 1) + array.width;
  return !large_read.failed() && fseeko(stream, end, SEEK_SET) == 0;
}

}  // namespace fld
