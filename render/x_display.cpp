#include "render/x_display.h"

#include <GL/glx.h>
#include <X11/Xlib.h>
#include <array>
#include <cstdlib>
#include <memory>
#include <stdexcept>
#include <string>

namespace render {

void require_x_display() {
  const char* name = std::getenv("DISPLAY");
  if (name == nullptr || *name == '\0') throw std::runtime_error("DISPLAY is not set");
  const std::unique_ptr<Display, int (*)(Display*)> display(XOpenDisplay(nullptr), XCloseDisplay);
  if (!display) throw std::runtime_error("the display " + std::string(name) + " cannot be opened");
  std::array<int, 11> config = {GLX_DOUBLEBUFFER, True, GLX_RED_SIZE, 8, GLX_GREEN_SIZE, 8, GLX_BLUE_SIZE, 8,
                                GLX_DEPTH_SIZE,   16,   None};
  int configs = 0;
  GLXFBConfig* const found =
      glXQueryExtension(display.get(), nullptr, nullptr) == True
          ? glXChooseFBConfig(display.get(), DefaultScreen(display.get()), config.data(), &configs)
          : nullptr;
  if (found != nullptr) XFree(static_cast<void*>(found));
  if (configs == 0) throw std::runtime_error("the display " + std::string(name) + " has no OpenGL");
}

}  // namespace render
