#include "tool/fonts.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>
#include <string_view>
#include <system_error>

namespace tool {

std::string font_for(const std::string& text) {
  // UTF-8 has three bytes and more from U+0800 on, and their first is 0xE0 or above.
  const bool is_latin =
      std::none_of(text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) >= 0xE0; });
  if (is_latin) return {};
  constexpr std::array<const char*, 6> kFonts = {
      "ipag", "NotoSansCJK-Regular", "VL-Gothic-Regular", "TakaoGothic", "ipaexg", "DroidSansFallbackFull"};
  namespace fs = std::filesystem;
  std::error_code error;
  for (fs::recursive_directory_iterator entry("/usr/share/fonts", error), end; !error && entry != end;
       entry.increment(error)) {
    const std::string name = entry->path().stem().string();
    if (std::find(kFonts.begin(), kFonts.end(), name) != kFonts.end() && !entry->is_directory(error))
      return entry->path().string();
  }
  return {};
}

bool is_font_file(const std::string& path) {
  std::array<char, 4> start{};
  std::ifstream(path, std::ios::binary).read(start.data(), start.size());
  const std::string_view found(start.data(), start.size());
  constexpr std::array<std::string_view, 4> kStarts = {std::string_view("\0\1\0\0", 4), "OTTO", "ttcf",
                                                       "true"};
  return std::find(kStarts.begin(), kStarts.end(), found) != kStarts.end();
}

}  // namespace tool
