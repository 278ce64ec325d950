// Films of pictures, made by ffmpeg.
#pragma once

#include <array>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <sys/types.h>
#include <vector>

#include "tool/replaced_file.h"

namespace tool {

// The formats of films, as extensions of their files.
inline constexpr std::array<std::string_view, 3> kFilmExtensions = {".webm", ".mp4", ".gif"};

// Whether a path has one of these extensions, in upper or lower case.
bool is_film(const std::filesystem::path& path);

class Film {
 public:
  // A film that takes the file's place when it is finished. Pictures with an odd number of pixels get another
  // row or column in `background` (#rrggbb) where the format wants it. Null when ffmpeg is not installed;
  // throws CommandError when the file cannot be written or ffmpeg cannot be run.
  static std::unique_ptr<Film> begin(const std::filesystem::path& path, double fps,
                                     const std::string& background);
  Film(const Film&) = delete;
  Film& operator=(const Film&) = delete;
  // Ends ffmpeg and removes what it wrote, unless the film is finished.
  ~Film();

  // Adds a PNG picture; all have the same size. Throws CommandError when ffmpeg fails, and Interrupted.
  void add(std::string_view png);
  // Must be called last.
  void finish();

 private:
  explicit Film(const std::filesystem::path& path) : path_(path), file_(path) {}
  bool run(const std::vector<std::string>& words);
  [[noreturn]] void fail();

  std::filesystem::path path_;
  ReplacedFile file_;
  pid_t process_ = -1;   // of ffmpeg, until it is waited for
  int pictures_ = -1;    // where ffmpeg reads them
  int complaints_ = -1;  // what ffmpeg writes to its standard error stream
};

}  // namespace tool
