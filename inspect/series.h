// Finds the files of a series by their names: "<base>_<cycle>.fld".
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace inspect {

struct SeriesFile {
  std::string path;
  std::int32_t cycle = 0;  // from the name
};

// Whether a file name has cycle digits before the extension.
bool has_cycle(const std::string& path);

// All files of the series that a file belongs to, by ascending cycle; none if its name has no cycle or its
// folder cannot be read.
std::vector<SeriesFile> find_series(const std::string& path);

}  // namespace inspect
