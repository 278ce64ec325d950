// A command's output: the standard output stream or a file, with every failure to write noticed.
#pragma once

#include <cstdio>
#include <memory>
#include <string>
#include <string_view>

namespace tool {

class Output {
 public:
  // An empty path or "-" is the standard output stream. Throws CommandError when the file cannot be made.
  explicit Output(const std::string& path);

  // Throws CommandError when the text cannot be written.
  void write(std::string_view text);

  // Must be called last: only now it is known that everything was written. Throws CommandError if it was not.
  void finish();

 private:
  struct Close {
    void operator()(std::FILE* file) const { std::fclose(file); }
  };

  [[noreturn]] void fail() const;

  std::string name_;
  std::unique_ptr<std::FILE, Close> file_;  // null: standard output
};

}  // namespace tool
