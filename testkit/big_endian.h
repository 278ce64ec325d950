// Conversion of values to big-endian bytes.
#pragma once

#include <bit>
#include <concepts>
#include <cstdint>
#include <span>
#include <string>

namespace testkit {

// Between this machine's byte order and the files'.
inline std::uint32_t in_file_order(std::uint32_t bits) {
  return std::endian::native == std::endian::big ? bits : __builtin_bswap32(bits);
}
inline std::uint64_t in_file_order(std::uint64_t bits) {
  return std::endian::native == std::endian::big ? bits : __builtin_bswap64(bits);
}

// Writes every value, converted to `Stored`, big-endian to `out` (sizeof(Stored) bytes each).
template <class Stored, class Value>
void store_big_endian(std::span<const Value> values, char* out) {
  static_assert(sizeof(Stored) == 4 || sizeof(Stored) == 8);
  using Bits = std::conditional_t<sizeof(Stored) == 4, std::uint32_t, std::uint64_t>;
  for (const Value value : values) {
    const Bits bits = in_file_order(std::bit_cast<Bits>(static_cast<Stored>(value)));
    __builtin_memcpy(out, &bits, sizeof bits);
    out += sizeof bits;
  }
}

// The bytes of a single value.
template <class Value>
std::string big_endian(Value value) {
  std::string bytes(sizeof(Value), '\0');
  store_big_endian<Value, Value>(std::span<const Value>(&value, 1), bytes.data());
  return bytes;
}

}  // namespace testkit
