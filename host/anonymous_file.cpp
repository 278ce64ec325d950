#include "host/anonymous_file.h"

#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <string>
#include <sys/mman.h>
#include <system_error>
#include <unistd.h>

namespace host {

int open_anonymous_file(Storage storage) {
  if (storage == Storage::memory) return memfd_create("reader", MFD_CLOEXEC);
  std::error_code error;
  std::string path = (std::filesystem::temp_directory_path(error) / "reader-XXXXXX").string();
  if (error) {
    errno = error.value();
    return -1;
  }
  const int file = mkostemp(path.data(), O_CLOEXEC);
  if (file >= 0) unlink(path.c_str());
  return file;
}

int open_anonymous_file() {
  const int file = open_anonymous_file(Storage::memory);
  return file >= 0 ? file : open_anonymous_file(Storage::temporary_folder);
}

}  // namespace host
