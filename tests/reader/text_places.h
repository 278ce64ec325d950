// Offsets in messages: the tests do not depend on where in a section an error is detected.
#pragma once

#include "gtest/gtest.h"
#include <string>
#include <string_view>

#include "testkit/file_writer.h"

namespace reader_test {

// The text with the number after "AT BYTE " replaced by "<inside>" if it is after the section's title.
inline std::string with_byte_checked(const std::string& text, const testkit::Place& section) {
  constexpr std::string_view kBefore = "AT BYTE ";
  const std::size_t before = text.find(kBefore);
  if (before == std::string::npos) return text;
  const std::size_t number = before + kBefore.size();
  std::size_t digits = 0;
  const auto byte = std::stoull(text.substr(number), &digits);
  EXPECT_LT(section.offset, byte) << text;
  EXPECT_GE(section.end, byte) << text;
  return text.substr(0, number) + "<inside>" + text.substr(number + digits);
}

}  // namespace reader_test
