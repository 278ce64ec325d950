#include "host/private_copy.h"

#include <cerrno>
#include <fcntl.h>
#include <string>
#include <sys/mman.h>
#include <sys/sendfile.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

#include "host/error.h"

namespace host {
namespace {

// Copies all of a file to a descriptor; false with errno set when it cannot be done.
bool copy_file(const std::filesystem::path& from, int to) {
  const int source = open(from.c_str(), O_RDONLY | O_CLOEXEC);
  if (source < 0) return false;
  struct stat status = {};
  bool is_copied = fstat(source, &status) == 0;
  for (auto left = static_cast<std::size_t>(is_copied ? status.st_size : 0); is_copied && left > 0;) {
    const ssize_t sent = sendfile(to, source, nullptr, left);
    if (sent < 0 && errno == EINTR) continue;
    is_copied = sent > 0;
    left -= static_cast<std::size_t>(is_copied ? sent : 0);
  }
  const int error = errno;
  close(source);
  errno = error;
  return is_copied;
}

}  // namespace

PrivateCopy::PrivateCopy(const std::filesystem::path& library)
    : descriptor_(memfd_create("reader-library", MFD_CLOEXEC)) {
  if (descriptor_ >= 0 && copy_file(library, descriptor_)) return;
  const std::string reason = std::generic_category().message(errno);
  if (descriptor_ >= 0) close(descriptor_);
  throw Error("cannot copy the reader library " + library.string() + ": " + reason);
}

PrivateCopy::~PrivateCopy() {
  close(descriptor_);
}

std::filesystem::path PrivateCopy::path() const {
  return "/proc/self/fd/" + std::to_string(descriptor_);
}

}  // namespace host
