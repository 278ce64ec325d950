// Asks the plug-in's entry points for all answers about a dataset.
#pragma once

#include <filesystem>

#include "host/entry_points.h"
#include "tests/decoders/answers.h"

namespace decoders {

// The value that undefined results get.
inline constexpr float kUndefined = -1.0e20F;

// Opens the dataset and requests everything step after step, as a host does, until a call fails. Assertions
// have to throw.
Answers served_answers(const host::EntryPoints& api, const std::filesystem::path& path);

}  // namespace decoders
