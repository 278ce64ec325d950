#include "inspect/byte_source.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

namespace inspect {
namespace {

[[noreturn]] void fail() {
  throw ReadError(std::generic_category().message(errno));
}

}  // namespace

FileSource::FileSource(const std::filesystem::path& path)
    : descriptor_(open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC)) {
  if (descriptor_ < 0) fail();
  struct stat status = {};
  if (fstat(descriptor_, &status) == 0 && S_ISREG(status.st_mode)) {
    size_ = static_cast<std::uint64_t>(status.st_size);
    return;
  }
  close(descriptor_);
  throw ReadError(S_ISDIR(status.st_mode) ? "is a directory" : "is not a regular file");
}

FileSource::~FileSource() {
  close(descriptor_);
}

void FileSource::read(std::uint64_t offset, std::span<unsigned char> out) {
  while (!out.empty()) {
    const ssize_t count = pread(descriptor_, out.data(), out.size(), static_cast<off_t>(offset));
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) fail();
    if (count == 0) throw ReadError("became shorter while it was read");
    offset += static_cast<std::uint64_t>(count);
    out = out.subspan(static_cast<std::size_t>(count));
  }
}

void StringSource::read(std::uint64_t offset, std::span<unsigned char> out) {
  std::copy_n(bytes_.begin() + static_cast<std::ptrdiff_t>(offset), out.size(), out.begin());
}

}  // namespace inspect
