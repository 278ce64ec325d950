// Whether bytes of a file are text: names and labels say nowhere how they are encoded.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_set>

namespace inspect {

// Printable ASCII.
bool is_printable(std::string_view bytes);

// Without control characters and well-formed as ASCII, Shift_JIS (with the vendor characters of code page
// 932) or UTF-8. A Shift_JIS character that was cut in half at the end counts as well: name fields are short.
bool is_text(std::string_view bytes);

// Without the blanks at the end.
std::string_view without_padding(std::string_view bytes);

// Remembers names to find one that comes twice, up to an amount of memory.
class NameSet {
 public:
  // Whether the name was there before. Names beyond the amount are not remembered.
  bool knows(std::string_view name);
  bool is_full() const { return bytes_ >= kMostBytes; }
  void clear();

 private:
  static constexpr std::size_t kMostBytes = std::size_t{8} << 20;

  std::unordered_set<std::string> names_;
  std::size_t bytes_ = 0;
};

}  // namespace inspect
