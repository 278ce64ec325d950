#include "host/text_encoding.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <iconv.h>

namespace host {
namespace {

constexpr std::string_view kReplacement = "\xEF\xBF\xBD";

unsigned char byte_at(std::string_view bytes, std::size_t i) {
  return i < bytes.size() ? static_cast<unsigned char>(bytes[i]) : 0;
}

// The length of the well-formed UTF-8 character at the front of `bytes`, 0 when there is none.
std::size_t utf8_length(std::string_view bytes) {
  const auto follows = [&](std::size_t i, int low = 0x80, int high = 0xBF) {
    return byte_at(bytes, i) >= low && byte_at(bytes, i) <= high;
  };
  const unsigned char lead = byte_at(bytes, 0);
  if (lead < 0x80) return 1;
  if (lead >= 0xC2 && lead <= 0xDF) return follows(1) ? 2 : 0;
  if (lead >= 0xE0 && lead <= 0xEF) {  // no overlong forms, no surrogates
    return follows(1, lead == 0xE0 ? 0xA0 : 0x80, lead == 0xED ? 0x9F : 0xBF) && follows(2) ? 3 : 0;
  }
  if (lead >= 0xF0 && lead <= 0xF4) {
    const bool is_second = follows(1, lead == 0xF0 ? 0x90 : 0x80, lead == 0xF4 ? 0x8F : 0xBF);
    return is_second && follows(2) && follows(3) ? 4 : 0;
  }
  return 0;
}

// The C library's converter from Shift_JIS, which small systems lack.
class Converter {
 public:
  Converter() : descriptor_(iconv_open("UTF-8", "CP932")) {}
  Converter(const Converter&) = delete;
  Converter& operator=(const Converter&) = delete;
  ~Converter() {
    if (is_available()) iconv_close(descriptor_);
  }

  // (iconv_t)-1 is how iconv_open reports a failure.
  bool is_available() const {
    return descriptor_ != reinterpret_cast<iconv_t>(-1);  // NOLINT(performance-no-int-to-ptr)
  }

  // Converts up to the first byte that cannot be converted, which is left at the front of `bytes`.
  std::string convert(std::string_view& bytes) {
    std::string text;
    std::array<char, 256> piece = {};
    // iconv takes its input through a pointer to non-const but does not write there.
    char* input = const_cast<char*>(bytes.data());
    std::size_t left = bytes.size();
    bool goes_on = true;
    while (left > 0 && goes_on) {
      char* output = piece.data();
      std::size_t room = piece.size();
      const std::size_t result = iconv(descriptor_, &input, &left, &output, &room);
      goes_on = result != static_cast<std::size_t>(-1) || errno == E2BIG;
      text.append(piece.data(), output);
    }
    iconv(descriptor_, nullptr, nullptr, nullptr, nullptr);
    bytes.remove_prefix(bytes.size() - left);
    return text;
  }

 private:
  iconv_t descriptor_;
};

// Every byte that is not ASCII as \x8a.
std::string with_escapes(std::string_view bytes) {
  constexpr std::string_view kDigits = "0123456789abcdef";
  std::string text;
  for (const char c : bytes) {
    const auto byte = static_cast<unsigned char>(c);
    text += byte < 0x80 ? std::string(1, c) : std::string("\\x") + kDigits[byte >> 4] + kDigits[byte & 15];
  }
  return text;
}

}  // namespace

bool is_utf8(std::string_view bytes) {
  while (!bytes.empty()) {
    const std::size_t length = utf8_length(bytes);
    if (length == 0) return false;
    bytes.remove_prefix(length);
  }
  return true;
}

std::string to_utf8(std::string_view bytes) {
  const auto is_ascii = [](char c) { return static_cast<unsigned char>(c) < 0x80; };
  if (std::all_of(bytes.begin(), bytes.end(), is_ascii)) return std::string(bytes);

  Converter converter;
  if (!converter.is_available()) return is_utf8(bytes) ? std::string(bytes) : with_escapes(bytes);
  std::string_view rest = bytes;
  std::string text = converter.convert(rest);
  if (!rest.empty() && is_utf8(bytes)) return std::string(bytes);
  while (!rest.empty()) {
    text += kReplacement;
    rest.remove_prefix(1);
    text += converter.convert(rest);
  }
  return text;
}

std::string message_to_utf8(std::string_view bytes) {
  return is_utf8(bytes) ? std::string(bytes) : to_utf8(bytes);
}

std::string without_controls(std::string_view text) {
  constexpr unsigned char kLead =
      0xC2;  // of U+0080 to U+00BF, of which the first half are control characters
  std::string result;
  result.reserve(text.size());
  for (std::size_t i = 0; i < text.size(); ++i) {
    const bool is_late_control =
        byte_at(text, i) == kLead && byte_at(text, i + 1) >= 0x80 && byte_at(text, i + 1) < 0xA0;
    if (is_late_control) ++i;
    result += is_late_control || byte_at(text, i) < 0x20 || byte_at(text, i) == 0x7F ? ' ' : text[i];
  }
  return result;
}

std::string printable(std::string_view bytes) {
  return without_controls(to_utf8(bytes));
}

}  // namespace host
