// Name, path and description of a sample.
#pragma once

#include <filesystem>
#include <string>

namespace samples {

struct SampleInfo {
  std::string name;
  std::filesystem::path file;  // the file to open; the first one of a series
  std::string description;     // one line
};

}  // namespace samples
