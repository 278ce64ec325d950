// How many file descriptors this process has open.
#pragma once

#include <cstddef>

namespace faults {

std::ptrdiff_t open_descriptors();

}  // namespace faults
