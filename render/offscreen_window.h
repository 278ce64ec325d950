// Windows for off-screen rendering, on a machine with or without a display.
#pragma once

#include <memory>
#include <string>
#include <vtkRenderWindow.h>
#include <vtkSmartPointer.h>

namespace render {

// A VTK render window that is never shown.
class OffscreenWindow {
 public:
  virtual ~OffscreenWindow() = default;
  virtual vtkRenderWindow& window() = 0;
};

// Uses EGL, which needs no display, or else the X display that DISPLAY names. Throws std::runtime_error with
// the reasons when neither works, where VTK's own windows would abort the process. The executable must be
// linked with glew_init.cpp.
std::unique_ptr<OffscreenWindow> make_offscreen_window(int width, int height);

}  // namespace render
