// How many of the damages a test run tries.
#pragma once

#include <cstddef>

namespace faults {

// The stride of this run: `complete` (all cases, by default) if the environment variable FLD_SWEEP is
// "complete", otherwise `partial`.
std::size_t sweep_stride(std::size_t partial, std::size_t complete = 1);

}  // namespace faults
