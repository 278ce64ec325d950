// The components of vectors: their names, and the magnitude.
#pragma once

#include <array>
#include <cmath>

#include "host/undefined_value.h"

namespace tool {

// The names of the axes, in the order of coordinates and of the components of vectors.
inline constexpr std::array<const char*, 3> kAxes = {"x", "y", "z"};

// What can be asked of a vector: a component by its number, or the magnitude.
inline constexpr int kMagnitude = 3;
inline constexpr std::array<const char*, 4> kComponents = {"x", "y", "z", "magnitude"};

// Undefined, or not a number, where one of the components is.
inline float magnitude(float x, float y, float z) {
  if (host::is_undefined(x) || host::is_undefined(y) || host::is_undefined(z)) return host::kUndefinedValue;
  const auto square = [](float value) { return static_cast<double>(value) * static_cast<double>(value); };
  return static_cast<float>(std::sqrt(square(x) + square(y) + square(z)));
}

}  // namespace tool
