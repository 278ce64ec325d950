// A temporary directory that is removed with the object.
#pragma once

#include <filesystem>
#include <string_view>

namespace testkit {

class TemporaryDirectory {
 public:
  // Within `parent`. Throws std::system_error.
  explicit TemporaryDirectory(const std::filesystem::path& parent = std::filesystem::temp_directory_path());
  ~TemporaryDirectory();
  TemporaryDirectory(const TemporaryDirectory&) = delete;
  TemporaryDirectory& operator=(const TemporaryDirectory&) = delete;

  const std::filesystem::path& path() const { return path_; }
  std::filesystem::path operator/(std::string_view name) const { return path_ / name; }

 private:
  std::filesystem::path path_;
};

}  // namespace testkit
