// Leads the standard error stream of this process into memory while it lives, for programs that run very many
// calls.
#pragma once

#include <string>

#include "tests/faults/spoken_lines.h"

namespace faults {

class StderrFile : public SpokenLines {
 public:
  // Throws std::system_error when the system gives no memory file.
  StderrFile();
  ~StderrFile() override;
  StderrFile(const StderrFile&) = delete;
  StderrFile& operator=(const StderrFile&) = delete;

  // Both count from the last call of take().
  std::size_t length() const override;
  std::string since(std::size_t begin) const override;
  // What was written since the last call.
  std::string take();
  // Writes to the stream that the process had before.
  void say(const std::string& text) const;

 private:
  int file_;
  int own_stream_;
};

}  // namespace faults
