// An OpenGL context on Mesa's surfaceless platform: no display and no window, only framebuffer objects.
#pragma once

#include <EGL/egl.h>

namespace render {

class EglContext {
 public:
  // Makes the context current. Throws std::runtime_error when the machine cannot create one.
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
