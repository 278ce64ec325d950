#include "format/input_file.h"

#include <algorithm>
#include <cstdint>
#include <fcntl.h>
#include <new>
#include <sys/stat.h>
#include <unistd.h>

namespace fld {

namespace {

constexpr int64_t kBulkBuffer = int64_t{256} << 10;
// Files up to this size are read at once, whatever the access.
constexpr int64_t kWholeFile = int64_t{64} << 10;

FILE* open_regular_file(const char* path, FileStamp& stamp) {
  // O_NONBLOCK: opening a named pipe must not block. It has no effect on regular files.
  const int descriptor = open(path, O_RDONLY | O_NONBLOCK | O_CLOEXEC);
  if (descriptor < 0) return nullptr;
  struct stat status = {};
  FILE* stream = nullptr;
  if (fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode)) stream = fdopen(descriptor, "rb");
  if (stream == nullptr) close(descriptor);
  stamp = FileStamp(status);
  return stream;
}

}  // namespace

InputFile::InputFile(const std::string& path, Access access) {
  stream_.reset(open_regular_file(path.c_str(), stamp_));
  if (stream_ == nullptr || (access == Access::walk && stamp_.size > kWholeFile)) return;
  const auto buffer_size = static_cast<size_t>(std::clamp<int64_t>(stamp_.size, BUFSIZ, kBulkBuffer));
  buffer_.reset(new (std::nothrow) char[buffer_size]);
  // If the allocation fails, the stream keeps its default buffer.
  if (buffer_ != nullptr) setvbuf(stream_.get(), buffer_.get(), _IOFBF, buffer_size);
}

}  // namespace fld
