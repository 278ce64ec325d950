// What tells whether a file is still the one that was read before: its identity, size and times.
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
  int64_t changed = 0;   // ns, of its entry
};

// Of the file that is at `path` now; without a file, one that equals that of no file.
FileStamp stamp_of(const std::string& path);

}  // namespace fld
