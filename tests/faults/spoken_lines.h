// The text that the reader has written to stderr.
#pragma once

#include <cstddef>
#include <string>

namespace faults {

class SpokenLines {
 public:
  virtual ~SpokenLines() = default;
  // Characters so far.
  virtual std::size_t length() const = 0;
  // The text after the first `begin` characters.
  virtual std::string since(std::size_t begin) const = 0;
};

}  // namespace faults
