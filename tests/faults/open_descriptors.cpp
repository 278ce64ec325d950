#include "tests/faults/open_descriptors.h"

#include <filesystem>
#include <iterator>

namespace faults {

std::ptrdiff_t open_descriptors() {
  const std::filesystem::directory_iterator descriptors("/proc/self/fd");
  return std::distance(begin(descriptors), end(descriptors));
}

}  // namespace faults
