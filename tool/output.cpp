#include "tool/output.h"

#include <cerrno>
#include <cstdio>
#include <system_error>
#include <unistd.h>

#include "tool/exit_status.h"

namespace tool {
namespace {

[[noreturn]] void fail() {
  throw CommandError(ExitStatus::failure, "standard output",
                     "cannot write: " + std::generic_category().message(errno));
}

}  // namespace

Output::Output(const std::string& path) {
  if (!path.empty() && path != kStandardOutput) file_.emplace(path);
}

void Output::write(std::string_view text) {
  if (file_) {
    file_->write(text);
  } else if (std::fwrite(text.data(), 1, text.size(), stdout) != text.size()) {
    fail();
  }
}

void Output::finish() {
  if (file_) {
    file_->finish();
  } else if (std::fflush(stdout) != 0) {
    fail();
  }
}

bool Output::is_terminal() const {
  return !file_ && isatty(STDOUT_FILENO) == 1;
}

}  // namespace tool
