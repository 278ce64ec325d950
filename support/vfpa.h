// VFPA: a floating-point array of single or double precision, kept as the file stores it, with access to its
// elements in either precision.
//
// Loops over whole arrays choose the precision once, with visit_elements, instead of once per element.
#pragma once

#include <cstdint>

#include "support/errors.h"

namespace fld {

// The handle does not own its array: whoever holds it frees `data` with cv_mfree. Copies share the array.
struct VFPA {
  int64_t precision = 0;  // element width in bytes: 4 (float) or 8 (double)
  void* data = nullptr;
};

// The error of a handle whose precision is neither 4 nor 8, met at the call site `site`.
FLDReadException invalid_precision(int site);

// Element `i` as float; a double is rounded.
inline float vfpa2float(VFPA a, int i) {
  if (a.precision == 4) return static_cast<const float*>(a.data)[i];
  if (a.precision == 8) return static_cast<float>(static_cast<const double*>(a.data)[i]);
  throw invalid_precision(1000199);
}

// Element `i` as double.
inline double vfpa2double(const VFPA& a, int i) {
  if (a.precision == 4) return static_cast<const float*>(a.data)[i];
  if (a.precision == 8) return static_cast<const double*>(a.data)[i];
  throw invalid_precision(1000211);
}

// Stores `x` into element `i`, rounded to the array's precision.
inline void double2vfpa(VFPA a, int i, double x) {
  if (a.precision == 4) {
    static_cast<float*>(a.data)[i] = static_cast<float>(x);
  } else if (a.precision == 8) {
    static_cast<double*>(a.data)[i] = x;
  } else {
    throw invalid_precision(1000222);
  }
}

// Calls `visit` with the array as float* or double*, so that a loop inside it has one element type.
template <class Visit>
void visit_elements(const VFPA& a, Visit visit) {
  if (a.precision == 4) {
    visit(static_cast<float*>(a.data));
  } else if (a.precision == 8) {
    visit(static_cast<double*>(a.data));
  } else {
    throw invalid_precision(1000199);
  }
}

// Replaces each of the first `n` elements that, rounded to float, is strictly greater than 0.99 times the
// limit of the array's own precision. Not-a-numbers stay.
void cv_cut_fld(VFPA a, int n, float fLimit, double dLimit, double replacement);

}  // namespace fld
