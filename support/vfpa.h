// VFPA: a floating-point array in the precision of the file (single or double), with element access in either
// precision.
//
// Loops over whole arrays dispatch on the precision once, with visit_elements.
#pragma once

#include <cstdint>

#include "support/errors.h"

namespace fld {

// Does not own its array: the holder frees `data` with cv_mfree. Copies share the array.
struct VFPA {
  int64_t precision = 0;  // element width in bytes: 4 (float) or 8 (double)
  void* data = nullptr;
};

// The exception for a precision other than 4 or 8; `site` is the number of the call site.
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

// Calls `visit` with the array as float* or double*.
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

// Replaces each of the first `n` elements that, rounded to float, exceeds 0.99 times the limit for the
// array's precision. NaNs are kept.
void cv_cut_fld(VFPA a, int n, float fLimit, double dLimit, double replacement);

}  // namespace fld
