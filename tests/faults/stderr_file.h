// Redirects stderr of this process to memory while it lives, for programs with very many calls.
#pragma once

#include <string>

#include "tests/faults/spoken_lines.h"

namespace faults {

class StderrFile : public SpokenLines {
 public:
  // Throws std::system_error.
  StderrFile();
  ~StderrFile() override;
  StderrFile(const StderrFile&) = delete;
  StderrFile& operator=(const StderrFile&) = delete;

  // Both start at the last call of take().
  std::size_t length() const override;
  std::string since(std::size_t begin) const override;
  // The text since the last call.
  std::string take();
  // Writes to the original stderr.
  void say(const std::string& text) const;

 private:
  int file_;
  int own_stream_;
};

}  // namespace faults
