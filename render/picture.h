// From what a window has drawn to a PNG file.
#pragma once

#include <string>
#include <vtkRenderWindow.h>

namespace render {

// A window is this many times as wide and high as the picture made of it, so that edges and texts come out
// smooth.
inline constexpr int kFiner = 2;

// The bytes of a PNG file with the window's contents, kFiner x kFiner pixels averaged into one.
std::string take_picture(vtkRenderWindow& window);

}  // namespace render
