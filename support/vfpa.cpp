#include "support/vfpa.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdio>
#include <limits>
#include <string>
#include <type_traits>

#include "support/worker_threads.h"

namespace fld {

FLDReadException invalid_precision(int site) {
  return FLDReadException("HANDLING AN INVALID DATA TYPE(" + std::to_string(site) + ").");
}

namespace {

// The largest float that is not above `limit`: a float exceeds the one if and only if it exceeds the other.
float float_limit(double limit) {
  const auto nearest = static_cast<float>(limit);
  return static_cast<double>(nearest) > limit
             ? std::nextafter(nearest, -std::numeric_limits<float>::infinity())
             : nearest;
}

// Replaces the values above `limit`. Most blocks have none and are not written.
template <class Value>
void cut_range(Value* begin, Value* end, float limit, Value replacement) {
  constexpr ptrdiff_t kBlock = 1024;
  const auto exceeds = [limit](Value value) { return static_cast<float>(value) > limit; };
  while (begin < end) {
    Value* const block_end = begin + std::min(kBlock, end - begin);
    bool any = false;
    for (const Value* value = begin; value < block_end; ++value) any |= exceeds(*value);
    if (any) std::replace_if(begin, block_end, exceeds, replacement);
    begin = block_end;
  }
}

}  // namespace

void cv_cut_fld(VFPA a, int n, float fLimit, double dLimit, double replacement) {
  double limit = 0.0;
  if (a.precision == 4) {
    limit = static_cast<double>(fLimit);
  } else if (a.precision == 8) {
    limit = dLimit;
  } else {
    fprintf(stderr, "HANDLING AN INVALID DATA TYPE(%d).", 1000120);
  }
  if (n <= 0) return;
  const float least = float_limit(limit * 0.99);
  visit_elements(a, [=](auto* values) {
    using Value = std::remove_pointer_t<decltype(values)>;
    const auto cut = static_cast<Value>(replacement);
    for_ranges(n, sizeof(Value),
               [=](int64_t begin, int64_t end) { cut_range(values + begin, values + end, least, cut); });
  });
}

}  // namespace fld
