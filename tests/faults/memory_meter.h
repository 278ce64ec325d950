// How much memory this process holds at most between two moments, counted request by request, so that what
// another allocation takes over counts once.
#pragma once

#include <cstddef>

namespace faults {

class MemoryMeter {
 public:
  // Starts at the memory held now.
  MemoryMeter();
  // Bytes held beyond that, at most so far and now.
  std::ptrdiff_t peak() const;
  std::ptrdiff_t held() const;

 private:
  std::ptrdiff_t start_;
};

}  // namespace faults
