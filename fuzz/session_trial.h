// The whole session as one trial.
#pragma once

#include <filesystem>
#include <string_view>

#include "tests/faults/whole_session.h"

namespace fuzz {

// Opens the dataset with the reader that this program is linked with, asks for everything, and ends the
// session. `input`: what its files were made of. For one input in 32 a good dataset is opened afterwards,
// which has to be served as ever, for half of these without USERD_exit_routine in between; the input says
// which, so that it does the same again.
void run_session(const std::filesystem::path& file, std::string_view input,
                 faults::SessionOptions options = {});

}  // namespace fuzz
