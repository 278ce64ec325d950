// Peak memory of this process in a time span, counted per allocation.
#pragma once

#include <cstddef>

namespace faults {

class MemoryMeter {
 public:
  // Starts with the memory allocated now.
  MemoryMeter();
  // Additional bytes: the peak so far, and now.
  std::ptrdiff_t peak() const;
  std::ptrdiff_t held() const;

 private:
  std::ptrdiff_t start_;
};

}  // namespace faults
