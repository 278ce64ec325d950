// Names and labels of FLD files are Shift_JIS; programs show them as UTF-8.
#pragma once

#include <string>
#include <string_view>

namespace host {

// `bytes` as UTF-8. They are taken as Shift_JIS (with the vendor characters of code page 932, and the
// backslash and tilde of ASCII); if they are not that but are UTF-8 already, they stay. A character that was
// cut in half at the end, and any byte of a text that is neither, becomes the replacement character U+FFFD.
// If the system has no converter, the bytes of a text that is not UTF-8 are shown as \x8a and so on.
std::string to_utf8(std::string_view bytes);

// Messages and paths as UTF-8: unlike the names in files they are taken as UTF-8 if they are that, and only
// else as a text of a file.
std::string message_to_utf8(std::string_view bytes);

// UTF-8 text with a space for each control character, so that it stays in its line and a terminal takes none
// of it for a command.
std::string without_controls(std::string_view text);

// A name or label of a file as UTF-8 without control characters.
std::string printable(std::string_view bytes);

// Whether `bytes` is a well-formed UTF-8 text.
bool is_utf8(std::string_view bytes);

}  // namespace host
