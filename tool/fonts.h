// Fonts for texts that the built-in one has no letters for.
#pragma once

#include <string>

namespace tool {

// A font file of the system for Japanese, if the text (UTF-8) has letters beyond the Latin, Greek and
// Cyrillic ones and there is such a file; else empty, for the built-in font.
std::string font_for(const std::string& text);

// Whether the file begins like a font (TrueType, OpenType or a collection of them).
bool is_font_file(const std::string& path);

}  // namespace tool
