// The size of a picture as it is written on the command line.
#pragma once

#include <array>
#include <string>

namespace tool {

// The width and height in WIDTHxHEIGHT, the --size of a command. Throws CommandError (wrong usage) unless
// both are from 64 to 4096.
std::array<int, 2> picture_size(const char* command, const std::string& text);

}  // namespace tool
