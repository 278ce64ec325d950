#include "tests/faults/failing_files.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <dirent.h>
#include <fcntl.h>
#include <map>
#include <memory>
#include <sys/stat.h>
#include <unistd.h>

#include "tests/support/failing_memory.h"

namespace faults {
namespace {

FileFault wanted = FileFault::kReadError;

bool strikes(FileFault fault) {
  return fault == wanted && FailingFiles::plan().strikes();
}

// The state of a stream. This bookkeeping must not use the failing allocator.
struct Backing {
  int descriptor;
};

class UnfailingMemory {
 public:
  UnfailingMemory() { FailingMemory::plan().pause(); }
  ~UnfailingMemory() { FailingMemory::plan().resume(); }
  UnfailingMemory(const UnfailingMemory&) = delete;
  UnfailingMemory& operator=(const UnfailingMemory&) = delete;
};

std::map<FILE*, int>& descriptors() {
  static std::map<FILE*, int> of_streams;
  return of_streams;
}

int descriptor_of(const void* cookie) {
  return static_cast<const Backing*>(cookie)->descriptor;
}

// The most bytes that a read returns, so that small files take many reads.
constexpr size_t kPiece = 128;

ssize_t read_backing(void* cookie, char* out, size_t size) {
  if (strikes(FileFault::kReadError)) {
    errno = EIO;
    return -1;
  }
  if (strikes(FileFault::kEnd)) return 0;
  if (strikes(FileFault::kShortRead)) size = std::min<size_t>(size, 1);
  return read(descriptor_of(cookie), out, std::min(size, kPiece));
}

int seek_backing(void* cookie, off64_t* offset, int whence) {
  if (strikes(FileFault::kSeekError)) {
    errno = EIO;
    return -1;
  }
  const off64_t position = lseek(descriptor_of(cookie), *offset, whence);
  if (position < 0) return -1;
  *offset = position;
  return 0;
}

int close_backing(void* cookie) {
  const std::unique_ptr<Backing> backing(static_cast<Backing*>(cookie));
  std::erase_if(descriptors(), [&](const auto& entry) { return entry.second == backing->descriptor; });
  return close(backing->descriptor);
}

}  // namespace

FailingFiles::FailingFiles(FileFault fault, int request, FaultPlan::Lasting lasting) {
  wanted = fault;
  plan().begin(request, lasting);
}

FailingFiles::~FailingFiles() {
  plan().end();
}

FaultPlan& FailingFiles::plan() {
  static constinit FaultPlan the_plan;
  return the_plan;
}

}  // namespace faults

// NOLINTBEGIN(bugprone-reserved-identifier): the names that the linker asks for
extern "C" {
int __real_open64(const char* path, int flags, ...);
int __real_fstat64(int descriptor, struct stat64* status);
int __real_fileno(FILE* stream);
ssize_t __real_pread64(int descriptor, void* out, size_t size, off64_t offset);
DIR* __real_opendir(const char* path);

int __wrap_open64(const char* path, int flags, ...) {
  if (faults::strikes(faults::FileFault::kOpenError)) {
    errno = EIO;
    return -1;
  }
  return __real_open64(path, flags);
}

int __wrap_fstat64(int descriptor, struct stat64* status) {
  if (faults::strikes(faults::FileFault::kOpenError)) {
    errno = EIO;
    return -1;
  }
  return __real_fstat64(descriptor, status);
}

DIR* __wrap_opendir(const char* path) {
  if (faults::strikes(faults::FileFault::kOpenError)) {
    errno = EIO;
    return nullptr;
  }
  return __real_opendir(path);
}

ssize_t __wrap_pread64(int descriptor, void* out, size_t size, off64_t offset) {
  if (faults::strikes(faults::FileFault::kReadError)) {
    errno = EIO;
    return -1;
  }
  if (faults::strikes(faults::FileFault::kEnd)) return 0;
  if (faults::strikes(faults::FileFault::kShortRead)) size = std::min<size_t>(size, 1);
  return __real_pread64(descriptor, out, size, offset);
}

FILE* __wrap_fdopen(int descriptor, const char* mode) {
  if (FailingMemory::plan().strikes()) return nullptr;
  const faults::UnfailingMemory memory;
  auto backing = std::make_unique<faults::Backing>(faults::Backing{descriptor});
  cookie_io_functions_t functions = {};
  functions.read = faults::read_backing;
  functions.seek = faults::seek_backing;
  functions.close = faults::close_backing;
  FILE* stream = fopencookie(backing.release(), mode, functions);
  faults::descriptors()[stream] = descriptor;
  return stream;
}

int __wrap_fileno(FILE* stream) {
  const auto found = faults::descriptors().find(stream);
  return found != faults::descriptors().end() ? found->second : __real_fileno(stream);
}
}
// NOLINTEND(bugprone-reserved-identifier)
