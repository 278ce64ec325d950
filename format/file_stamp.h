// Identity, size and times of a file, to detect that it has changed.
#pragma once

#include <cstdint>
#include <string>

struct stat;

namespace fld {

struct FileStamp {
  FileStamp() = default;
  explicit FileStamp(const struct stat& status);

  bool operator==(const FileStamp&) const = default;

  uint64_t device = 0;
  uint64_t inode = 0;
  int64_t size = -1;     // bytes; -1: no file
  int64_t modified = 0;  // ns
  int64_t changed = 0;   // ns, inode change
};

// The stamp of the file at `path`; a default-constructed one if there is no such file.
FileStamp stamp_of(const std::string& path);

}  // namespace fld
