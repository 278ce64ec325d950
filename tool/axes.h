// The names of the axes, in the order of coordinates and of the components of vectors.
#pragma once

#include <array>

namespace tool {

inline constexpr std::array<const char*, 3> kAxes = {"x", "y", "z"};

}  // namespace tool
