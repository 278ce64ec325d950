// Whether VTK's ordinary windows would work here.
#pragma once

namespace render {

// Throws std::runtime_error that says why no window with OpenGL can be made on the display that DISPLAY
// names.
void require_x_display();

}  // namespace render
