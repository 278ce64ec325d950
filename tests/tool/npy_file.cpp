#include "tests/tool/npy_file.h"

#include <bit>
#include <cstdint>
#include <cstdio>
#include <stdexcept>

namespace tool_test {

NpyArray read_npy(const std::string& bytes) {
  const std::string magic("\x93NUMPY\x01\x00", 8);
  if (bytes.size() < 10 || bytes.compare(0, 8, magic) != 0)
    throw std::runtime_error("no NumPy file of format 1.0");
  const auto length = static_cast<std::size_t>(static_cast<unsigned char>(bytes[8])) |
                      (static_cast<std::size_t>(static_cast<unsigned char>(bytes[9])) << 8U);
  const std::size_t start = 10 + length;
  if (start % 64 != 0 || bytes.size() < start) throw std::runtime_error("the header has a wrong length");
  const std::string header = bytes.substr(10, length);
  NpyArray array;
  int end = 0;
  const int numbers =
      std::sscanf(header.c_str(), "{'descr': '<f4', 'fortran_order': False, 'shape': (%zu, %zu), }%n",
                  &array.rows, &array.columns, &end);
  const std::string rest = header.substr(static_cast<std::size_t>(end));
  if (numbers != 2 || end == 0 || rest.find_first_not_of(' ') + 1 != rest.size() || !rest.ends_with('\n')) {
    throw std::runtime_error("odd header: " + header);
  }
  array.values.resize(array.rows * array.columns);
  if (bytes.size() != start + array.values.size() * sizeof(float))
    throw std::runtime_error("the data has a wrong length");
  for (std::size_t i = 0; i < array.values.size(); ++i) {
    std::uint32_t word = 0;
    for (std::size_t byte = sizeof word; byte-- > 0;)
      word = word << 8U | static_cast<unsigned char>(bytes[start + i * sizeof word + byte]);
    array.values[i] = std::bit_cast<float>(word);
  }
  return array;
}

}  // namespace tool_test
