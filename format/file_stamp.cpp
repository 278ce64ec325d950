#include "format/file_stamp.h"

#include <sys/stat.h>

namespace fld {

namespace {

int64_t nanoseconds(const struct timespec& time) {
  return static_cast<int64_t>(time.tv_sec) * 1000000000 + time.tv_nsec;
}

}  // namespace

FileStamp::FileStamp(const struct stat& status)
    : device(status.st_dev),
      inode(status.st_ino),
      size(status.st_size),
      modified(nanoseconds(status.st_mtim)),
      changed(nanoseconds(status.st_ctim)) {}

FileStamp stamp_of(const std::string& path) {
  struct stat status = {};
  return stat(path.c_str(), &status) == 0 ? FileStamp(status) : FileStamp();
}

}  // namespace fld
