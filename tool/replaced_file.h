// Files that are there completely or not at all.
#pragma once

#include <cstdio>
#include <filesystem>
#include <memory>
#include <string_view>

namespace tool {

// A file that is written beside its place and gets its name when it is complete, so that whoever reads it
// finds the old one or the new one. A symbolic link stays one: the file that it leads to is replaced. What is
// no regular file, such as a device or a pipe, is written to where it is, and so is a file in a folder that
// takes no others.
class ReplacedFile {
 public:
  // Each throws CommandError when the file cannot be made or written.
  explicit ReplacedFile(const std::filesystem::path& path);
  ReplacedFile(const ReplacedFile&) = delete;
  ReplacedFile& operator=(const ReplacedFile&) = delete;
  // Leaves nothing behind unless the file is finished.
  ~ReplacedFile();

  void write(std::string_view bytes);
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

// Writes a whole file in this way.
void replace_file(const std::filesystem::path& path, std::string_view bytes);

}  // namespace tool
