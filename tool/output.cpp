#include "tool/output.h"

#include <cerrno>
#include <system_error>

#include "tool/exit_status.h"

namespace tool {

Output::Output(const std::string& path) : name_(path.empty() || path == "-" ? "standard output" : path) {
  if (path.empty() || path == "-") return;
  file_.reset(std::fopen(path.c_str(), "wb"));
  if (!file_) fail();
}

void Output::write(std::string_view text) {
  std::FILE* stream = file_ ? file_.get() : stdout;
  if (std::fwrite(text.data(), 1, text.size(), stream) != text.size()) fail();
}

void Output::finish() {
  if (file_ ? std::fclose(file_.release()) != 0 : std::fflush(stdout) != 0) fail();
}

void Output::fail() const {
  throw CommandError(ExitStatus::failure, name_, "cannot write: " + std::generic_category().message(errno));
}

}  // namespace tool
