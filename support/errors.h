// The errors of the format and support layers. They are thrown by value and caught as FLDException.
#pragma once

#include <string>
#include <utility>

namespace fld {

// Base class. Holds an upper-case English message. The only virtual member is the destructor.
class FLDException {
 public:
  explicit FLDException(std::string message) : message_(std::move(message)) {}
  FLDException(const FLDException&) = default;
  FLDException(FLDException&&) = default;
  FLDException& operator=(const FLDException&) = default;
  FLDException& operator=(FLDException&&) = default;
  virtual ~FLDException() = default;

  const char* getMessage() const { return message_.c_str(); }

 private:
  std::string message_;
};

// The file is truncated or holds data that the reader cannot use.
class FLDReadException : public FLDException {
 public:
  using FLDException::FLDException;
};

// Memory is exhausted, or the tracked allocator was misused.
class MemoryAllocException : public FLDException {
 public:
  using FLDException::FLDException;
};

}  // namespace fld
