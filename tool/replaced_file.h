// Files that are replaced atomically.
#pragma once

#include <cstdio>
#include <filesystem>
#include <memory>
#include <string_view>

namespace tool {

// A file that is written under a temporary name in the same folder and renamed when it is complete, so that a
// reader of the file sees the old content or the new one. A symbolic link is followed and stays. Devices,
// pipes and files in folders that are not writable are written in place.
class ReplacedFile {
 public:
  // Each throws CommandError when the file cannot be made or written.
  explicit ReplacedFile(const std::filesystem::path& path);
  ReplacedFile(const ReplacedFile&) = delete;
  ReplacedFile& operator=(const ReplacedFile&) = delete;
  // Removes the temporary file unless the file is finished.
  ~ReplacedFile();

  void write(std::string_view bytes);
  // Of the file, for another program that writes it.
  int descriptor() const { return fileno(file_.get()); }
  // Must be called last: puts the file in its place.
  void finish();

 private:
  struct Close {
    void operator()(std::FILE* file) const { std::fclose(file); }
  };

  [[noreturn]] void fail(int error) const;

  std::filesystem::path path_;
  std::filesystem::path target_;     // that the path leads to
  std::filesystem::path temporary_;  // empty when the target is written in place
  std::unique_ptr<std::FILE, Close> file_;
};

// Writes a whole file like this.
void replace_file(const std::filesystem::path& path, std::string_view bytes);

}  // namespace tool
