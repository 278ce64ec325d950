// The whole session as one trial.
#pragma once

#include <cstddef>
#include <filesystem>

#include "tests/faults/whole_session.h"

namespace fuzz {

// Opens the dataset with the reader that this program is linked with, asks for everything, and ends the
// session. `file_size`: bytes of all its files.
void run_session(const std::filesystem::path& file, std::size_t file_size,
                 const faults::SessionOptions& options = {});

}  // namespace fuzz
