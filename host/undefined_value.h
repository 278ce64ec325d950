// The value that represents undefined values of a variable.
//
// The reader stores it in place of the values that the file marks as undefined, in arrays of single or double
// precision, and delivers it as a float. The lowest finite float passes through unchanged, so it can be
// compared for equality; no solver computes it; and, unlike NaN, it distinguishes undefined values from the
// NaN of a diverging solver.
#pragma once

#include <limits>

namespace host {

inline constexpr float kUndefinedValue = std::numeric_limits<float>::lowest();

constexpr bool is_undefined(float value) {
  return value == kUndefinedValue;
}

}  // namespace host
