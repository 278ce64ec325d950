// An FLD file opened for reading. Owns the stream and its buffer; closed on every path.
#pragma once

#include <memory>
#include <stdio.h>
#include <string>

#include "format/file_stamp.h"

namespace fld {

// How a file is going to be read: a walk from title to title that steps over nearly everything, or arrays in
// bulk. A step over data refills the stream's buffer, so walks want a small one, and bulk reads a large one.
enum class Access { walk, bulk };

class InputFile {
 public:
  // Opens a regular file. Anything else (a pipe, a device, a folder) is a file that cannot be opened, without
  // blocking.
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
