// Bytes written out by hand: hexadecimal digits, and text between apostrophes.
#pragma once

#include <cctype>
#include <stdexcept>
#include <string>
#include <string_view>

// hex("0000 0008 'VTRL-FLD' 0000 0008"); blanks and line ends between the digits do not count.
inline std::string hex(std::string_view text) {
  std::string bytes;
  bool in_text = false;
  int high = -1;
  for (const char c : text) {
    if (c == '\'') {
      in_text = !in_text;
    } else if (in_text) {
      bytes += c;
    } else if (std::isspace(static_cast<unsigned char>(c)) == 0) {
      if (std::isxdigit(static_cast<unsigned char>(c)) == 0) throw std::invalid_argument("not a digit");
      const int digit = std::isdigit(static_cast<unsigned char>(c)) != 0 ? c - '0' : (c | 0x20) - 'a' + 10;
      if (high < 0) {
        high = digit;
      } else {
        bytes += static_cast<char>(high * 16 + digit);
        high = -1;
      }
    }
  }
  if (high >= 0 || in_text) throw std::invalid_argument("half a byte, or text without end");
  return bytes;
}

// The inverse, for readable failures: 4 bytes per word, 4 words per line.
inline std::string to_hex(std::string_view bytes) {
  constexpr std::string_view kDigits = "0123456789abcdef";
  std::string text;
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    const auto value = static_cast<unsigned char>(bytes[i]);
    text += kDigits[value >> 4U];
    text += kDigits[value & 15U];
    if (i % 4 == 3) text += i % 16 == 15 ? '\n' : ' ';
  }
  return text;
}

#define EXPECT_BYTES(actual, expected) EXPECT_EQ(to_hex(actual), to_hex(hex(expected)))
