// Loops over large arrays, split among threads. No thread outlives the call that made it, and the results do
// not depend on the number of threads.
//
// The variable FLD_THREADS sets the number of threads (1 to 8; default: the cores that the process may use).
// Arrays below FLD_THREADS_FROM bytes (default 1 MiB) are left to the calling thread.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <type_traits>
#include <utility>

namespace fld {

constexpr int kMaxThreads = 8;

// Number of threads for work on an array of `bytes` bytes, 1 to kMaxThreads.
int threads_for(int64_t bytes);

// Calls work(context, k) for each k of 0 to `count` - 1 (at most kMaxThreads), in up to `count` threads of
// which one is the calling thread, and returns when all calls have. The calling thread begins with 0; it also
// does what no other thread has begun by then, because it cannot be created or its core is busy. `work` must
// not throw. Signals are blocked in the other threads.
void run_in_threads(int count, void (*work)(void* context, int k), void* context);

// The same with work(k).
template <class Work>
void run_in_threads(int count, Work&& work) {
  if (count == 1) return work(0);
  run_in_threads(
      count, [](void* context, int k) { (*static_cast<std::remove_reference_t<Work>*>(context))(k); }, &work);
}

// The indices from 0 to n - 1 in `count` consecutive ranges of about the same length.
struct Ranges {
  int64_t n = 0;
  int count = 1;

  int64_t begin(int k) const { return n / count * k + std::min<int64_t>(k, n % count); }
  int64_t end(int k) const { return begin(k + 1); }
};

// The ranges of `n` elements of `width` bytes that go to a thread each.
inline Ranges ranges_of(int64_t n, size_t width) {
  const auto threads = threads_for(n * static_cast<int64_t>(width));
  return {n, static_cast<int>(std::clamp<int64_t>(n, 1, threads))};
}

// For each range, the sum of measure(begin, end) over the ranges before it. A Sum of {} is zero.
template <class Sum, class Measure>
std::array<Sum, kMaxThreads> sums_before(const Ranges& ranges, Measure measure) {
  std::array<Sum, kMaxThreads> sums = {};
  if (ranges.count == 1) return sums;
  run_in_threads(ranges.count - 1,
                 [&](int k) { sums[static_cast<size_t>(k) + 1] = measure(ranges.begin(k), ranges.end(k)); });
  for (size_t k = 1; k < static_cast<size_t>(ranges.count); ++k) sums[k] += sums[k - 1];
  return sums;
}

// Calls work(begin, end) for ranges of `n` elements of `width` bytes.
template <class Work>
void for_ranges(int64_t n, size_t width, Work work) {
  const Ranges ranges = ranges_of(n, width);
  run_in_threads(ranges.count, [&](int k) { work(ranges.begin(k), ranges.end(k)); });
}

// The results of work(begin, end) for these ranges, combined in order with `combine`.
template <class Work, class Combine>
auto combine_ranges(int64_t n, size_t width, Work work, Combine combine) {
  using Result = std::invoke_result_t<Work&, int64_t, int64_t>;
  const Ranges ranges = ranges_of(n, width);
  std::array<Result, kMaxThreads> results = {};
  run_in_threads(ranges.count,
                 [&](int k) { results[static_cast<size_t>(k)] = work(ranges.begin(k), ranges.end(k)); });
  for (int k = 1; k < ranges.count; ++k)
    results[0] = combine(std::move(results[0]), std::move(results[static_cast<size_t>(k)]));
  return std::move(results[0]);
}

// The sum of the results of work(begin, end).
template <class Work>
auto sum_of_ranges(int64_t n, size_t width, Work work) {
  return combine_ranges(n, width, work, [](auto a, auto b) { return a += b; });
}

}  // namespace fld
