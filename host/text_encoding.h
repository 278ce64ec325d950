// Conversion of names and labels, which are Shift_JIS in FLD files, to UTF-8.
#pragma once

#include <string>
#include <string_view>

namespace host {

// `bytes` as UTF-8. They are taken as Shift_JIS (with the vendor characters of code page 932, and the
// backslash and tilde of ASCII); if they are not that but are UTF-8 already, they stay. A character that was
// cut in half at the end, and any byte of a text that is neither, becomes the replacement character U+FFFD.
// If the system has no converter, the bytes of a text that is not UTF-8 are shown as \x8a and so on.
std::string to_utf8(std::string_view bytes);

// Messages and paths as UTF-8: unlike names in files, they are used unchanged if they are valid UTF-8, and
// converted otherwise.
std::string message_to_utf8(std::string_view bytes);

// UTF-8 text with control characters replaced by spaces, so that it stays on its line and is harmless on a
// terminal.
std::string without_controls(std::string_view text);

// A name or label of a file as UTF-8 without control characters.
std::string printable(std::string_view bytes);

// Whether `bytes` is a well-formed UTF-8 text.
bool is_utf8(std::string_view bytes);

}  // namespace host
