// The sample datasets: small, realistic, and with fields given by formulas.
#pragma once

#include <cstddef>
#include <filesystem>
#include <functional>
#include <vector>

#include "samples/sample_info.h"

namespace samples {

inline constexpr std::size_t kSamples = 4;

// Writes every sample into its own folder below `directory`, which is created if necessary. Calls
// `before_each` with the number of samples written so far. Throws std::system_error.
std::vector<SampleInfo> write_samples(const std::filesystem::path& directory,
                                      const std::function<void(std::size_t done)>& before_each = {});

}  // namespace samples
