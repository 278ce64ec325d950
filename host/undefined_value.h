// The value that stands for "undefined here" in the values of a variable.
//
// It is handed to the reader, which stores it in place of the values that the file marks as undefined, in
// arrays of single or double precision, and delivers it as a float. The lowest finite float makes that way
// unchanged, so a plain comparison finds it again; no result of a solver has it; and, unlike a NaN, it keeps
// undefined places apart from numbers that a diverging solver left as NaN in the file.
#pragma once

#include <limits>

namespace host {

inline constexpr float kUndefinedValue = std::numeric_limits<float>::lowest();

constexpr bool is_undefined(float value) {
  return value == kUndefinedValue;
}

}  // namespace host
