// Conversion of the file's big-endian numbers.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <vector>

#include "inspect/byte_source.h"

namespace inspect {

inline std::uint32_t in_host_order(std::uint32_t word) {
  return std::endian::native == std::endian::big ? word : __builtin_bswap32(word);
}
inline std::uint64_t in_host_order(std::uint64_t word) {
  return std::endian::native == std::endian::big ? word : __builtin_bswap64(word);
}

template <class Number>
Number load(const unsigned char* bytes) {
  using Word = std::conditional_t<sizeof(Number) == 4, std::uint32_t, std::uint64_t>;
  Word word = 0;
  std::memcpy(&word, bytes, sizeof word);
  return std::bit_cast<Number>(in_host_order(word));
}

inline std::int32_t load_int32(const unsigned char* bytes) {
  return load<std::int32_t>(bytes);
}

// bytes.size() must be a multiple of the size of a number.
template <class Number>
void load_all(Bytes bytes, std::vector<Number>& numbers) {
  numbers.resize(bytes.size() / sizeof(Number));
  for (std::size_t i = 0; i < numbers.size(); ++i)
    numbers[i] = load<Number>(bytes.data() + i * sizeof(Number));
}

}  // namespace inspect
