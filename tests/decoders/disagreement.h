// Gives the same files to the plug-in and to inspect/, and tells where they disagree.
#pragma once

#include <filesystem>
#include <string>

#include "host/entry_points.h"

namespace decoders {

// What is wrong, or "" if all of this holds:
//   - a dataset in which a full check finds no error is opened and served as a whole;
//   - where no file has an error in its structure and the plug-in serves everything, its answers follow from
//     what inspect/ decodes.
// Also says in `was_compared` whether answers were compared. `api`: assertions have to throw.
std::string disagreement(const host::EntryPoints& api, const std::filesystem::path& file,
                         bool* was_compared = nullptr);

}  // namespace decoders
