#include "support/vfpa.h"

#include <cstdio>
#include <string>
#include <type_traits>

#include "support/worker_threads.h"

namespace fld {

FLDReadException invalid_precision(int site) {
  return FLDReadException("HANDLING AN INVALID DATA TYPE(" + std::to_string(site) + ").");
}

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
  limit *= 0.99;
  visit_elements(a, [=](auto* values) {
    using Value = std::remove_pointer_t<decltype(values)>;
    const auto cut = static_cast<Value>(replacement);
    for_ranges(n, sizeof(Value), [=](int64_t begin, int64_t end) {
      for (int64_t i = begin; i < end; ++i) {
        const auto rounded = static_cast<double>(static_cast<float>(values[i]));
        values[i] = rounded > limit ? cut : values[i];
      }
    });
  });
}

}  // namespace fld
