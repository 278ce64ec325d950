// Reads NumPy files of format 1.0 that hold a float32 array of two dimensions.
#pragma once

#include <string>
#include <vector>

namespace tool_test {

struct NpyArray {
  std::size_t rows = 0;
  std::size_t columns = 0;
  std::vector<float> values;  // row after row

  float at(std::size_t row, std::size_t column) const { return values[row * columns + column]; }
};

// Throws std::runtime_error when `bytes` are not such a file, from the first byte to the last.
NpyArray read_npy(const std::string& bytes);

}  // namespace tool_test
