// A temporary directory for the files of this process, in memory if possible.
#pragma once

#include <filesystem>
#include <string_view>

namespace fuzz {

class ScratchDirectory {
 public:
  // Throws std::filesystem::filesystem_error.
  ScratchDirectory();
  ~ScratchDirectory();
  ScratchDirectory(const ScratchDirectory&) = delete;
  ScratchDirectory& operator=(const ScratchDirectory&) = delete;

  const std::filesystem::path& path() const { return path_; }
  // Replaces the content of the file `name`. Throws std::system_error.
  std::filesystem::path write(std::string_view name, std::string_view bytes) const;

 private:
  std::filesystem::path path_;
};

}  // namespace fuzz
