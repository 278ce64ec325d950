// A whole session as one trial.
#pragma once

#include <filesystem>
#include <string_view>

#include "tests/faults/whole_session.h"

namespace fuzz {

// Opens the dataset with the linked reader, requests everything, and ends the session. `input`: the bytes of
// its files. For one input in 32 a valid dataset is opened afterwards, which must give the same answers as
// before, half of the time without USERD_exit_routine in between. Which one is chosen from the input, so that
// it is reproducible.
void run_session(const std::filesystem::path& file, std::string_view input,
                 faults::SessionOptions options = {});

}  // namespace fuzz
