// An OpenGL context to draw with, on a machine with or without a display.
#pragma once

#include <memory>
#include <string>
#include <vtkRenderWindow.h>
#include <vtkSmartPointer.h>

namespace render {

// A window that is never shown.
class OffscreenWindow {
 public:
  virtual ~OffscreenWindow() = default;
  virtual vtkRenderWindow& window() = 0;
};

// Makes a window without a display (EGL, on any machine with Mesa), or on the display that DISPLAY names.
// Throws std::runtime_error with the reasons when neither is possible; it never ends the process, as VTK's
// own windows do without a display. The executable has to be linked with glew_init.cpp.
std::unique_ptr<OffscreenWindow> make_offscreen_window(int width, int height);

}  // namespace render
