// The magnitude of a vector that a reader gives component by component.
#pragma once

#include <cmath>

#include "host/undefined_value.h"

namespace tool {

// Undefined, or not a number, where one of the components is.
inline float magnitude(float x, float y, float z) {
  if (host::is_undefined(x) || host::is_undefined(y) || host::is_undefined(z)) return host::kUndefinedValue;
  const auto square = [](float value) { return static_cast<double>(value) * static_cast<double>(value); };
  return static_cast<float>(std::sqrt(square(x) + square(y) + square(z)));
}

}  // namespace tool
