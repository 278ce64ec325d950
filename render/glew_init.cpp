// Overrides glewInit in an executable that exports its symbols. Without an X server GLEW's own function loads
// everything that VTK needs and then fails because there is no GLX display; that one error is ignored here.
#include <dlfcn.h>

extern "C" __attribute__((visibility("default"))) unsigned glewInit() {
  constexpr unsigned kNoGlxDisplay = 4;
  using Function = unsigned (*)();
  const auto real = reinterpret_cast<Function>(dlsym(RTLD_NEXT, "glewInit"));
  const unsigned result = real == nullptr ? 1U : real();
  return result == kNoGlxDisplay ? 0U : result;
}
