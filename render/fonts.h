// Fonts that have the characters of a text.
#pragma once

#include <set>
#include <string>

namespace render {

// The characters of a text (UTF-8) for which a font (the path of its file; empty: the built-in font) has no
// glyphs. Blanks and control characters do not count.
std::set<char32_t> missing_characters(const std::string& text, const std::string& font);

// The built-in font (an empty path) if it has all characters of a text, or else the path of an installed font
// that has more of them, or most of them, if there is one.
std::string font_for(const std::string& text);

// Whether a file begins like a font (TrueType, OpenType or a collection of them).
bool is_font_file(const std::string& path);

}  // namespace render
