#include "tool/best_effort_write.h"

#include <cerrno>
#include <cstddef>
#include <unistd.h>

namespace tool {

void write_if_possible(int descriptor, std::string_view text) {
  while (!text.empty()) {
    const ssize_t written = write(descriptor, text.data(), text.size());
    if (written < 0 && errno == EINTR) continue;
    if (written <= 0) return;
    text.remove_prefix(static_cast<std::size_t>(written));
  }
}

}  // namespace tool
