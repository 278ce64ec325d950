// The character buffers that a host passes to a reader: zero-filled rows of a fixed width, each followed by a
// terminator, so that a row that the reader fills completely is still a string.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace host {

class TextRows {
 public:
  TextRows(std::size_t rows, std::size_t width) : pool_(rows * (width + 1), '\0'), pointers_(rows) {
    for (std::size_t i = 0; i < rows; ++i) pointers_[i] = pool_.data() + i * (width + 1);
  }

  TextRows(const TextRows&) = delete;
  TextRows& operator=(const TextRows&) = delete;
  TextRows(TextRows&&) = default;
  TextRows& operator=(TextRows&&) = default;
  ~TextRows() = default;

  char** rows() { return pointers_.data(); }
  char* row(std::size_t i) { return pointers_[i]; }
  std::string text(std::size_t i) const { return pointers_[i]; }

 private:
  std::vector<char> pool_;
  std::vector<char*> pointers_;
};

}  // namespace host
