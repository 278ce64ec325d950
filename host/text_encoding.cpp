#include "host/text_encoding.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <iconv.h>

#include "host/error.h"

namespace host {
namespace {

constexpr std::string_view kReplacement = "\xEF\xBF\xBD";

// One conversion descriptor of the C library.
class Converter {
 public:
  Converter(const char* to, const char* from) : descriptor_(iconv_open(to, from)) {
    // (iconv_t)-1 is how iconv_open reports a failure.
    if (descriptor_ == reinterpret_cast<iconv_t>(-1)) {  // NOLINT(performance-no-int-to-ptr)
      throw Error("cannot convert text from " + std::string(from) + ": " + std::strerror(errno));
    }
  }
  Converter(const Converter&) = delete;
  Converter& operator=(const Converter&) = delete;
  ~Converter() { iconv_close(descriptor_); }

  // Converts as far as it goes; takes what was converted off `bytes` and returns the text. errno-like `stop`
  // tells why it ended: 0 at the end, EINVAL at a character that is cut short, EILSEQ at one that is none.
  std::string convert(std::string_view& bytes, int& stop) {
    std::string text;
    std::array<char, 256> piece = {};
    // iconv takes its input through a pointer to non-const but does not write there.
    char* input = const_cast<char*>(bytes.data());
    std::size_t left = bytes.size();
    stop = 0;
    while (left > 0 && stop == 0) {
      char* output = piece.data();
      std::size_t room = piece.size();
      if (iconv(descriptor_, &input, &left, &output, &room) == static_cast<std::size_t>(-1) &&
          errno != E2BIG) {
        stop = errno;
      }
      text.append(piece.data(), output);
    }
    iconv(descriptor_, nullptr, nullptr, nullptr, nullptr);
    bytes.remove_prefix(bytes.size() - left);
    return text;
  }

 private:
  iconv_t descriptor_;
};

}  // namespace

bool is_utf8(std::string_view bytes) {
  int stop = 0;
  Converter("UTF-32LE", "UTF-8").convert(bytes, stop);
  return stop == 0;
}

std::string to_utf8(std::string_view bytes) {
  const auto is_ascii = [](char c) { return static_cast<unsigned char>(c) < 0x80; };
  if (std::all_of(bytes.begin(), bytes.end(), is_ascii)) return std::string(bytes);

  Converter converter("UTF-8", "CP932");
  std::string_view rest = bytes;
  int stop = 0;
  std::string text = converter.convert(rest, stop);
  if (stop != 0 && is_utf8(bytes)) return std::string(bytes);
  while (stop != 0) {
    text += kReplacement;
    rest.remove_prefix(1);
    text += converter.convert(rest, stop);
  }
  return text;
}

std::string message_to_utf8(std::string_view bytes) {
  return is_utf8(bytes) ? std::string(bytes) : to_utf8(bytes);
}

std::string without_controls(std::string_view text) {
  constexpr unsigned char kLead = 0xC2;  // of U+0080 to U+00BF, the first half of which are controls
  const auto byte_at = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
  std::string result;
  result.reserve(text.size());
  for (std::size_t i = 0; i < text.size(); ++i) {
    const bool is_late_control =
        byte_at(i) == kLead && i + 1 < text.size() && byte_at(i + 1) >= 0x80 && byte_at(i + 1) < 0xA0;
    if (is_late_control) ++i;
    result += is_late_control || byte_at(i) < 0x20 || byte_at(i) == 0x7F ? ' ' : text[i];
  }
  return result;
}

std::string printable(std::string_view bytes) {
  return without_controls(to_utf8(bytes));
}

}  // namespace host
