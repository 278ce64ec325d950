// The number of open file descriptors of this process.
#pragma once

#include <cstddef>

namespace faults {

std::ptrdiff_t open_descriptors();

}  // namespace faults
