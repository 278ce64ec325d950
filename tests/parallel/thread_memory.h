// The memory that a thread has from `new`, for tests of what a rank holds. This program's `new` counts it.
#pragma once

#include <cstdint>

namespace parallel_test {

// Whether arrays count: AddressSanitizer has forms of new for them that do not call that for single objects.
#ifdef __SANITIZE_ADDRESS__
constexpr bool kCountsArrays = false;
#else
constexpr bool kCountsArrays = true;
#endif

// Has the peak begin anew: at what the thread holds.
void forget_peak_of_thread();
// The most bytes that the thread has held since then, less what it held then.
std::int64_t peak_of_thread();

}  // namespace parallel_test
