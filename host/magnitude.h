// The magnitude of a vector that a reader gives component by component.
#pragma once

#include <cmath>

#include "host/undefined_value.h"

namespace host {

// Undefined, or not a number, where one of the components is.
inline float magnitude(float x, float y, float z) {
  if (is_undefined(x) || is_undefined(y) || is_undefined(z)) return kUndefinedValue;
  const auto square = [](float value) { return static_cast<double>(value) * static_cast<double>(value); };
  return static_cast<float>(std::sqrt(square(x) + square(y) + square(z)));
}

}  // namespace host
