// The sample datasets: small, with meaning, and with fields whose formulas are known.
#pragma once

#include <filesystem>
#include <vector>

#include "samples/sample_info.h"

namespace samples {

// Writes every sample into a folder of its own below `directory`, which is made if it is missing. Throws
// std::system_error when the system refuses.
std::vector<SampleInfo> write_samples(const std::filesystem::path& directory);

}  // namespace samples
