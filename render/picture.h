// A window's contents as a PNG file.
#pragma once

#include <string>
#include <vtkRenderWindow.h>

namespace render {

// Antialiasing: a window has this many times the width and height of its picture.
inline constexpr int kSupersampling = 2;

// The window's contents, averaged over kSupersampling x kSupersampling pixels, as the bytes of a PNG file.
std::string take_picture(vtkRenderWindow& window);

}  // namespace render
