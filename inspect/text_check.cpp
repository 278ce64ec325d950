#include "inspect/text_check.h"

#include <algorithm>

#include "host/text_encoding.h"

namespace inspect {
namespace {

bool is_between(unsigned char byte, int low, int high) {
  return byte >= low && byte <= high;
}

bool is_control(unsigned char byte) {
  return byte < 0x20 || byte == 0x7f;
}

unsigned char byte_at(std::string_view bytes, std::size_t i) {
  return static_cast<unsigned char>(bytes[i]);
}

bool is_shift_jis(std::string_view bytes) {
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    const unsigned char lead = byte_at(bytes, i);
    const bool is_single = lead < 0x80 || is_between(lead, 0xa1, 0xdf);  // ASCII, half-width katakana
    if (is_single) continue;
    if (!is_between(lead, 0x81, 0x9f) && !is_between(lead, 0xe0, 0xfc)) return false;
    if (++i == bytes.size()) return true;
    const unsigned char trail = byte_at(bytes, i);
    if (!is_between(trail, 0x40, 0x7e) && !is_between(trail, 0x80, 0xfc)) return false;
  }
  return true;
}

}  // namespace

bool is_printable(std::string_view bytes) {
  return std::all_of(bytes.begin(), bytes.end(),
                     [](char c) { return is_between(static_cast<unsigned char>(c), 0x20, 0x7e); });
}

bool is_text(std::string_view bytes) {
  const bool has_control = std::any_of(bytes.begin(), bytes.end(),
                                       [](char c) { return is_control(static_cast<unsigned char>(c)); });
  return !has_control && (is_shift_jis(bytes) || host::is_utf8(bytes));
}

char folded(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

std::string_view without_padding(std::string_view bytes) {
  const std::size_t last = bytes.find_last_not_of(' ');
  return last == std::string_view::npos ? std::string_view() : bytes.substr(0, last + 1);
}

bool NameSet::knows(std::string_view name) {
  const std::string key(name);
  if (names_.contains(key)) return true;
  if (is_full()) return false;
  constexpr std::size_t kOverhead = 64;  // of an entry, about
  bytes_ += key.size() + kOverhead;
  names_.insert(key);
  return false;
}

void NameSet::clear() {
  names_.clear();
  bytes_ = 0;
}

}  // namespace inspect
