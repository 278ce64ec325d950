#include "format/input_file.h"

#include <fcntl.h>
#include <new>
#include <sys/stat.h>
#include <unistd.h>

namespace fld {

namespace {

constexpr size_t kBulkBuffer = size_t{256} << 10;

FILE* open_regular_file(const char* path) {
  // O_NONBLOCK: opening a named pipe must not wait for a writer. Regular files ignore it.
  const int descriptor = open(path, O_RDONLY | O_NONBLOCK | O_CLOEXEC);
  if (descriptor < 0) return nullptr;
  struct stat status = {};
  FILE* stream = nullptr;
  if (fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode)) stream = fdopen(descriptor, "rb");
  if (stream == nullptr) close(descriptor);
  return stream;
}

}  // namespace

InputFile::InputFile(const std::string& path, Access access) : stream_(open_regular_file(path.c_str())) {
  if (stream_ == nullptr || access == Access::walk) return;
  buffer_.reset(new (std::nothrow) char[kBulkBuffer]);
  // Without memory for it the stream keeps its own small buffer.
  if (buffer_ != nullptr) setvbuf(stream_.get(), buffer_.get(), _IOFBF, kBulkBuffer);
}

}  // namespace fld
