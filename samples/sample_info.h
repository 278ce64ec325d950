// What a sample is called, where it was written and what it shows.
#pragma once

#include <filesystem>
#include <string>

namespace samples {

struct SampleInfo {
  std::string name;
  std::filesystem::path file;  // to open; of a series the first
  std::string description;     // one line
};

}  // namespace samples
