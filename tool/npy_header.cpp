#include "tool/npy_header.h"

#include "fmt/format.h"

namespace tool {

std::string npy_header(std::string_view type, std::size_t rows, std::size_t columns) {
  // The header's length, with its 10 bytes in front, is a multiple of 64; the line end is its last byte.
  constexpr std::size_t kPreamble = 10;
  std::string dictionary =
      fmt::format("{{'descr': '{}', 'fortran_order': False, 'shape': ({}, {}), }}", type, rows, columns);
  dictionary.append(63 - (kPreamble + dictionary.size()) % 64, ' ');
  dictionary += '\n';
  std::string header("\x93NUMPY\x01\x00", 8);
  header += static_cast<char>(dictionary.size() & 0xFF);
  header += static_cast<char>(dictionary.size() >> 8);
  return header + dictionary;
}

}  // namespace tool
