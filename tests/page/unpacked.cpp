#include "tests/page/unpacked.h"

#include <cstdint>
#include <stdexcept>
#include <string_view>
#include <zlib.h>

namespace page_test {

std::string unpacked(const std::string& packed) {
  constexpr std::string_view kDigits = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
  std::string bytes;
  std::uint32_t group = 0;
  unsigned bits = 0;
  for (const char c : packed) {
    if (c == '=') break;
    const std::size_t digit = kDigits.find(c);
    if (digit == std::string_view::npos) throw std::runtime_error("no base64");
    group = group << 6U | static_cast<std::uint32_t>(digit);
    bits += 6;
    if (bits < 8) continue;
    bits -= 8;
    bytes.push_back(static_cast<char>(group >> bits & 0xFFU));
  }
  constexpr std::size_t kMost = 1 << 24;
  std::string out(kMost, '\0');
  uLongf length = out.size();
  if (uncompress(reinterpret_cast<Bytef*>(out.data()), &length, reinterpret_cast<const Bytef*>(bytes.data()),
                 bytes.size()) != Z_OK)
    throw std::runtime_error("no zlib stream");
  out.resize(length);
  return out;
}

}  // namespace page_test
