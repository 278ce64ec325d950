// Which bytes are text.
#include "inspect/text_check.h"

#include "gtest/gtest.h"
#include <string>

namespace {

std::string printed(const char* bytes) {
  return testing::PrintToString(std::string(bytes));
}

// The first and last byte of each range of Shift_JIS, and what is beside them.
TEST(TextCheck, ShiftJisAtTheEdges) {
  for (const char* text : {"\xa1", "\xdf", "\x81\x40", "\x81\x7e", "\x81\x80", "\x81\xfc", "\x9f\x40",
                           "\xe0\x40", "\xfc\x40", "a\x9f\xfcz"}) {
    EXPECT_TRUE(inspect::is_text(text)) << printed(text);
  }
  for (const char* bytes : {"\x80", "\xa0", "\xfd", "\xff", "\x80\x40", "\xa0\x40", "\xfd\x40", "\x81\x3f",
                            "\x81\xfd", "\xe0\x3f", "a\x81\xffz"}) {
    EXPECT_FALSE(inspect::is_text(bytes)) << printed(bytes);
  }
}

// The writer cuts names at a number of bytes.
TEST(TextCheck, ACharacterCutInHalfIsText) {
  EXPECT_TRUE(inspect::is_text("a\x81"));
}

TEST(TextCheck, ControlCharactersAreNone) {
  for (const char* bytes : {"a\x1f", "\x01z", "\x7f"})
    EXPECT_FALSE(inspect::is_text(bytes)) << printed(bytes);
  EXPECT_TRUE(inspect::is_text(" ~"));
  EXPECT_TRUE(inspect::is_text(""));
}

TEST(TextCheck, PrintableIsAscii) {
  EXPECT_TRUE(inspect::is_printable(" ~"));
  EXPECT_FALSE(inspect::is_printable("\x1f"));
  EXPECT_FALSE(inspect::is_printable("\x7f"));
  EXPECT_FALSE(inspect::is_printable("\x80"));
}

TEST(TextCheck, FoldsTheLettersAlone) {
  std::string folded;
  for (const char c : std::string("@AZ[`az{")) folded += inspect::folded(c);
  EXPECT_EQ(folded, "@az[`az{");
}

TEST(TextCheck, PaddingIsBlanksAtTheEnd) {
  EXPECT_EQ(inspect::without_padding(" a b  "), " a b");
  EXPECT_EQ(inspect::without_padding("a"), "a");
  EXPECT_EQ(inspect::without_padding("  "), "");
}

}  // namespace
