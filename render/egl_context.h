// A current OpenGL context of Mesa's surfaceless platform: no display, no window, framebuffer objects alone.
#pragma once

#include <EGL/egl.h>

namespace render {

class EglContext {
 public:
  // Throws std::runtime_error when there is none to be had.
  EglContext();
  EglContext(const EglContext&) = delete;
  EglContext& operator=(const EglContext&) = delete;
  ~EglContext();

  void make_current();
  bool is_current() const;

 private:
  EGLDisplay display_ = EGL_NO_DISPLAY;
  EGLContext context_ = EGL_NO_CONTEXT;
};

}  // namespace render
