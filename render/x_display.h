// Whether VTK can render on the X display.
#pragma once

namespace render {

// Throws std::runtime_error with the reason when the display that DISPLAY names has no OpenGL.
void require_x_display();

}  // namespace render
