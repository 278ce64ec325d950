// How many of the damages a test run tries.
#pragma once

#include <cstddef>

namespace faults {

// For sweeps whose cases take long: about a tenth of them. Coprime to the periods of the damages (8 bits of a
// byte, 8 values of a word, 7 of a marker, 3 moves of a section), so that all kinds are tried.
inline constexpr std::size_t kAboutATenth = 11;

// The stride of this run: `complete` (all cases, by default) if the environment variable FLD_SWEEP is
// "complete", otherwise `partial`.
std::size_t sweep_stride(std::size_t partial, std::size_t complete = 1);

}  // namespace faults
