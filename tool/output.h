// A command's output: standard output or a file. Every failed write is an error.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "tool/replaced_file.h"

namespace tool {

// Path that stands for standard output.
inline constexpr char kStandardOutput[] = "-";

class Output {
 public:
  // An empty path or "-" is the standard output stream; a file takes its place when it is finished. Throws
  // CommandError when the file cannot be made.
  explicit Output(const std::string& path);

  // Throws CommandError when the text cannot be written.
  void write(std::string_view text);

  // Must be called last: flushes and closes. Throws CommandError if not everything was written.
  void finish();

  // Whether it goes to a terminal, which it shares with the progress line.
  bool is_terminal() const;

 private:
  std::optional<ReplacedFile> file_;  // none: the standard output stream
};

}  // namespace tool
