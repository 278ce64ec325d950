// A command's output: the standard output stream or a file, with every failure to write noticed.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "tool/replaced_file.h"

namespace tool {

// What a path on the command line means the standard output stream by.
inline constexpr char kStandardOutput[] = "-";

class Output {
 public:
  // An empty path or "-" is the standard output stream; a file takes its place when it is finished. Throws
  // CommandError when the file cannot be made.
  explicit Output(const std::string& path);

  // Throws CommandError when the text cannot be written.
  void write(std::string_view text);

  // Must be called last: only now it is known that everything was written. Throws CommandError if it was not.
  void finish();

  // Whether it goes to a terminal, where other text has to make room.
  bool is_terminal() const;

 private:
  std::optional<ReplacedFile> file_;  // none: the standard output stream
};

}  // namespace tool
