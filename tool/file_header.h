// What a file says about its own making.
#pragma once

#include <filesystem>
#include <string>

namespace tool {

struct FileHeader {
  std::string application;  // UTF-8, like all texts here; empty where the file says nothing
  std::string version;      // of the application
  std::string date;
  std::string comments;
};

// What the header of a file says; nothing where it cannot be read.
FileHeader read_file_header(const std::filesystem::path& path);

}  // namespace tool
