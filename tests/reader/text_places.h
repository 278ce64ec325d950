// Offsets in messages: where a fault is noticed inside a section is not the tests' business.
#pragma once

#include "gtest/gtest.h"
#include <regex>
#include <string>

#include "testkit/file_writer.h"

namespace reader_test {

// The text with the number behind "AT BYTE " replaced by "<inside>", if it lies behind the section's title.
inline std::string with_byte_checked(const std::string& text, const testkit::Place& section) {
  std::smatch found;
  if (!std::regex_search(text, found, std::regex("AT BYTE ([0-9]+)"))) return text;
  const auto byte = std::stoull(found[1]);
  EXPECT_LT(section.offset, byte) << text;
  EXPECT_GE(section.end, byte) << text;
  return found.prefix().str() + "AT BYTE <inside>" + found.suffix().str();
}

}  // namespace reader_test
