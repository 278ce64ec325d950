// The bytes in what page::pack() makes.
#pragma once

#include <string>

namespace page_test {

// Decodes base64 and unpacks the zlib stream in it. Throws std::runtime_error for anything else.
std::string unpacked(const std::string& packed);

}  // namespace page_test
