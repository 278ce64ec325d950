// What the reader has written to the standard error stream, wherever a program keeps it.
#pragma once

#include <cstddef>
#include <string>

namespace faults {

class SpokenLines {
 public:
  virtual ~SpokenLines() = default;
  // Characters so far.
  virtual std::size_t length() const = 0;
  // What was written when there were `begin` characters.
  virtual std::string since(std::size_t begin) const = 0;
};

}  // namespace faults
