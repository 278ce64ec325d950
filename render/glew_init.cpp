// Stands in front of GLEW's initialisation in an executable that exports it: without an X server the real one
// ends with the error that there is no GLX display, when everything that VTK needs is loaded already.
#include <dlfcn.h>

extern "C" __attribute__((visibility("default"))) unsigned glewInit() {
  constexpr unsigned kNoGlxDisplay = 4;
  using Function = unsigned (*)();
  const auto real = reinterpret_cast<Function>(dlsym(RTLD_NEXT, "glewInit"));
  const unsigned result = real == nullptr ? 1U : real();
  return result == kNoGlxDisplay ? 0U : result;
}
