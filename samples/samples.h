// The sample datasets: small, with meaning, and with fields whose formulas are known.
#pragma once

#include <cstddef>
#include <filesystem>
#include <functional>
#include <vector>

#include "samples/sample_info.h"

namespace samples {

inline constexpr std::size_t kSamples = 4;

// Writes every sample into a folder of its own below `directory`, which is made if it is missing. Calls
// `before_each` with the number of samples that are written. Throws std::system_error when the system
// refuses.
std::vector<SampleInfo> write_samples(const std::filesystem::path& directory,
                                      const std::function<void(std::size_t done)>& before_each = {});

}  // namespace samples
