// Checks whether bytes of a file are text. The encoding of names and labels is not stored in the file.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_set>

namespace inspect {

// Printable ASCII.
bool is_printable(std::string_view bytes);

// Whether bytes have no control characters and are valid ASCII, Shift_JIS (with the vendor characters of code
// page 932) or UTF-8. An incomplete Shift_JIS character at the end is accepted, because name fields are
// short.
bool is_text(std::string_view bytes);

// The letter in lower case; ASCII only, independent of the locale.
char folded(char c);

// Without trailing blanks.
std::string_view without_padding(std::string_view bytes);

// Finds duplicate names, with bounded memory.
class NameSet {
 public:
  // Whether the name was added before; adds it unless the set is full.
  bool knows(std::string_view name);
  bool is_full() const { return bytes_ >= kMostBytes; }
  void clear();

 private:
  static constexpr std::size_t kMostBytes = std::size_t{8} << 20;

  std::unordered_set<std::string> names_;
  std::size_t bytes_ = 0;
};

}  // namespace inspect
