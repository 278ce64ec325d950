// Best-effort writes, for error messages and progress lines: a failure has nobody to be reported to.
#pragma once

#include <string_view>

namespace tool {

// Writes the text to a file descriptor and ignores failures. Safe to call just before the process ends.
void write_if_possible(int descriptor, std::string_view text);

}  // namespace tool
