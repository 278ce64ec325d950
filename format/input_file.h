// An FLD file opened for reading. Owns the stream and its buffer.
#pragma once

#include <memory>
#include <stdio.h>
#include <string>

#include "format/file_stamp.h"

namespace fld {

// The expected access: walk from title to title and seek past the data, or read arrays in bulk. A seek
// refills the stream's buffer, so a walk uses a small buffer and a bulk read a large one.
enum class Access { walk, bulk };

class InputFile {
 public:
  // Opens a regular file. Anything else (a pipe, a device, a directory) fails to open. Never blocks.
  InputFile(const std::string& path, Access access);

  explicit operator bool() const { return stream_ != nullptr; }
  FILE* stream() const { return stream_.get(); }
  const FileStamp& stamp() const { return stamp_; }

 private:
  struct Close {
    void operator()(FILE* stream) const { fclose(stream); }
  };
  FileStamp stamp_;
  std::unique_ptr<char[]> buffer_;  // outlives the stream
  std::unique_ptr<FILE, Close> stream_;
};

}  // namespace fld
