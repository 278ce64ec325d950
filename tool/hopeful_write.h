// Writing where nothing can be done about a failure: what is said about an error, and the line that tells
// progress.
#pragma once

#include <string_view>

namespace tool {

// Writes the text to a descriptor as far as that goes. May be called by a program that is about to end in
// whatever state.
void write_if_possible(int descriptor, std::string_view text);

}  // namespace tool
