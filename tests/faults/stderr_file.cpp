#include "tests/faults/stderr_file.h"

#include <cerrno>
#include <cstdio>
#include <sys/mman.h>
#include <system_error>
#include <unistd.h>

namespace faults {

StderrFile::StderrFile() : file_(memfd_create("stderr", MFD_CLOEXEC)), own_stream_(dup(STDERR_FILENO)) {
  if (file_ < 0 || own_stream_ < 0 || dup2(file_, STDERR_FILENO) < 0) {
    throw std::system_error(errno, std::generic_category(), "standard error stream");
  }
}

StderrFile::~StderrFile() {
  dup2(own_stream_, STDERR_FILENO);
  close(own_stream_);
  close(file_);
}

std::size_t StderrFile::length() const {
  fflush(stderr);
  return static_cast<std::size_t>(lseek(file_, 0, SEEK_CUR));
}

std::string StderrFile::since(std::size_t begin) const {
  std::string text(length() - begin, '\0');
  const ssize_t count = pread(file_, text.data(), text.size(), static_cast<off_t>(begin));
  text.resize(count > 0 ? static_cast<std::size_t>(count) : 0);
  return text;
}

std::string StderrFile::take() {
  std::string text = since(0);
  if (ftruncate(file_, 0) != 0 || lseek(file_, 0, SEEK_SET) != 0) {
    throw std::system_error(errno, std::generic_category(), "standard error stream");
  }
  return text;
}

void StderrFile::say(const std::string& text) const {
  if (write(own_stream_, text.data(), text.size()) < 0) return;
}

}  // namespace faults
