#include "page/encoding.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstddef>
#include <stdexcept>
#include <zlib.h>

namespace page {
namespace {

constexpr std::uint64_t zigzag(std::int64_t number) {
  return (static_cast<std::uint64_t>(number) << 1U) ^ static_cast<std::uint64_t>(number >> 63);
}

void append_differences(Bytes& bytes, const std::vector<int>& numbers) {
  int before = 0;
  for (const int number : numbers) {
    append_varint(bytes, zigzag(std::int64_t{number} - before));
    before = number;
  }
}

void append_runs(Bytes& bytes, const std::vector<std::uint8_t>& sizes) {
  Bytes runs;
  std::uint64_t count = 0;
  for (std::size_t from = 0; from < sizes.size(); ++count) {
    std::size_t to = from;
    while (to < sizes.size() && sizes[to] == sizes[from]) ++to;
    append_varint(runs, to - from);
    append_varint(runs, sizes[from]);
    from = to;
  }
  append_varint(bytes, count);
  bytes += runs;
}

void append_corners(Bytes& bytes, const Faces& faces) {
  constexpr std::size_t kMostCorners = 255;
  std::array<int, kMostCorners> before{};
  auto corner = faces.corners.begin();
  for (const std::uint8_t size : faces.sizes) {
    for (std::size_t i = 0; i < size; ++i, ++corner) {
      append_varint(bytes, zigzag(std::int64_t{*corner} - before[i]));
      before[i] = *corner;
    }
  }
}

void append_quantised(Bytes& bytes, std::span<const float> numbers, Range range, int bits) {
  const std::uint32_t nothing = (1U << static_cast<unsigned>(bits)) - 1;
  const double width = static_cast<double>(range.high) - static_cast<double>(range.low);
  const double scale = width > 0 ? static_cast<double>(nothing - 1) / width : 0;
  const std::size_t low_bytes = bytes.size();
  bytes.resize(bytes.size() + 2 * numbers.size());
  std::uint32_t before = 0;
  for (std::size_t i = 0; i < numbers.size(); ++i) {
    const double number = static_cast<double>(numbers[i]);
    const std::uint32_t code =
        std::isfinite(number)
            ? static_cast<std::uint32_t>(std::lround((number - static_cast<double>(range.low)) * scale))
            : nothing;
    const auto difference = static_cast<std::int16_t>(code - before);
    before = code;
    const auto coded = static_cast<std::uint16_t>(zigzag(difference));
    bytes[low_bytes + i] = static_cast<char>(coded & 0xFFU);
    bytes[low_bytes + numbers.size() + i] = static_cast<char>(coded >> 8U);
  }
}

void append_whole(Bytes& bytes, std::span<const float> numbers) {
  const std::size_t start = bytes.size();
  bytes.resize(start + 4 * numbers.size());
  for (std::size_t i = 0; i < numbers.size(); ++i) {
    const auto bits = std::bit_cast<std::uint32_t>(numbers[i]);
    for (std::size_t plane = 0; plane < 4; ++plane)
      bytes[start + plane * numbers.size() + i] = static_cast<char>(bits >> (8 * plane) & 0xFFU);
  }
}

std::string to_base64(const Bytes& bytes) {
  constexpr char kDigits[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
  std::string text((bytes.size() + 2) / 3 * 4, '=');
  char* to = text.data();
  for (std::size_t i = 0; i < bytes.size(); i += 3) {
    std::uint32_t group = 0;
    const std::size_t count = std::min<std::size_t>(3, bytes.size() - i);
    for (std::size_t k = 0; k < 3; ++k)
      group = group << 8U | (k < count ? static_cast<unsigned char>(bytes[i + k]) : 0U);
    for (std::size_t k = 0; k < 4; ++k) {
      if (k <= count) to[k] = kDigits[group >> (18 - 6 * k) & 0x3FU];
    }
    to += 4;
  }
  return text;
}

}  // namespace

Range range_of(std::span<const float> numbers) {
  Range range;
  bool is_empty = true;
  for (const float number : numbers) {
    if (!std::isfinite(number)) continue;
    range.low = is_empty ? number : std::min(range.low, number);
    range.high = is_empty ? number : std::max(range.high, number);
    is_empty = false;
  }
  return range;
}

void append_numbers(Bytes& bytes, std::span<const float> numbers, Range range, int bits) {
  if (bits == 0) {
    append_whole(bytes, numbers);
  } else {
    append_quantised(bytes, numbers, range, bits);
  }
}

void append_varint(Bytes& bytes, std::uint64_t number) {
  for (; number > 0x7F; number >>= 7U) bytes.push_back(static_cast<char>((number & 0x7FU) | 0x80U));
  bytes.push_back(static_cast<char>(number));
}

void append_faces(Bytes& bytes, const Faces& faces) {
  append_runs(bytes, faces.sizes);
  append_corners(bytes, faces);
  append_differences(bytes, faces.elements);
  append_differences(bytes, faces.nodes);
}

std::string pack(const Bytes& bytes) {
  Bytes packed(compressBound(bytes.size()), '\0');
  uLongf length = packed.size();
  if (compress2(reinterpret_cast<Bytef*>(packed.data()), &length,
                reinterpret_cast<const Bytef*>(bytes.data()), bytes.size(), Z_DEFAULT_COMPRESSION) != Z_OK)
    throw std::runtime_error("the page's data cannot be compressed");
  packed.resize(length);
  return to_base64(packed);
}

}  // namespace page
