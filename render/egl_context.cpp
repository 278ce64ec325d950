#include "render/egl_context.h"

#include <EGL/eglext.h>
#include <array>
#include <stdexcept>

namespace render {

EglContext::EglContext() {
  display_ = eglGetPlatformDisplay(EGL_PLATFORM_SURFACELESS_MESA, nullptr, nullptr);
  if (display_ == EGL_NO_DISPLAY || eglInitialize(display_, nullptr, nullptr) != EGL_TRUE)
    throw std::runtime_error("EGL has no surfaceless platform");
  constexpr std::array<EGLint, 15> kConfig = {EGL_SURFACE_TYPE,
                                              EGL_PBUFFER_BIT,
                                              EGL_RENDERABLE_TYPE,
                                              EGL_OPENGL_BIT,
                                              EGL_RED_SIZE,
                                              8,
                                              EGL_GREEN_SIZE,
                                              8,
                                              EGL_BLUE_SIZE,
                                              8,
                                              EGL_ALPHA_SIZE,
                                              8,
                                              EGL_DEPTH_SIZE,
                                              24,
                                              EGL_NONE};
  // What VTK's shaders need.
  constexpr std::array<EGLint, 7> kVersion = {EGL_CONTEXT_MAJOR_VERSION,
                                              3,
                                              EGL_CONTEXT_MINOR_VERSION,
                                              2,
                                              EGL_CONTEXT_OPENGL_PROFILE_MASK,
                                              EGL_CONTEXT_OPENGL_CORE_PROFILE_BIT,
                                              EGL_NONE};
  EGLConfig config = nullptr;
  EGLint configs = 0;
  if (eglBindAPI(EGL_OPENGL_API) == EGL_TRUE &&
      eglChooseConfig(display_, kConfig.data(), &config, 1, &configs) == EGL_TRUE && configs > 0) {
    context_ = eglCreateContext(display_, config, EGL_NO_CONTEXT, kVersion.data());
  }
  if (context_ == EGL_NO_CONTEXT ||
      eglMakeCurrent(display_, EGL_NO_SURFACE, EGL_NO_SURFACE, context_) != EGL_TRUE) {
    eglTerminate(display_);
    throw std::runtime_error("EGL has no context of OpenGL 3.2");
  }
}

EglContext::~EglContext() {
  eglMakeCurrent(display_, EGL_NO_SURFACE, EGL_NO_SURFACE, EGL_NO_CONTEXT);
  eglDestroyContext(display_, context_);
  eglTerminate(display_);
}

void EglContext::make_current() {
  eglMakeCurrent(display_, EGL_NO_SURFACE, EGL_NO_SURFACE, context_);
}

bool EglContext::is_current() const {
  return eglGetCurrentContext() == context_;
}

}  // namespace render
