// The error of the host library: what went wrong, and in which entry point of the reader if it was one.
#pragma once

#include <stdexcept>
#include <string>

namespace host {

class Error : public std::runtime_error {
 public:
  // An error of the host itself: the library cannot be loaded, a wrong part number and the like.
  explicit Error(const std::string& reason) : std::runtime_error(reason), reason_(reason) {}

  // A call of `entry_point` that failed, left an exception or answered something impossible.
  Error(const std::string& entry_point, const std::string& reason)
      : std::runtime_error(entry_point + ": " + reason), entry_point_(entry_point), reason_(reason) {}

  // The entry point's plain name; empty when none was involved.
  const std::string& entry_point() const { return entry_point_; }

  // The message without the entry point's name.
  const std::string& reason() const { return reason_; }

 private:
  std::string entry_point_;
  std::string reason_;
};

}  // namespace host
