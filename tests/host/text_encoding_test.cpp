#include "host/text_encoding.h"

#include "gtest/gtest.h"
#include <string>

namespace {

TEST(TextEncoding, AsciiStaysAsItIs) {
  EXPECT_EQ(host::to_utf8("a\\b~c"), "a\\b~c");
  EXPECT_EQ(host::to_utf8(""), "");
}

TEST(TextEncoding, ShiftJisBecomesUtf8) {
  // The third character's second byte is the backslash's.
  EXPECT_EQ(host::to_utf8("\x8a\x4f\x93\x9b\x95\x5c\x96\xca"), "外筒表面");
  EXPECT_EQ(host::to_utf8("a\\\xb1~"), "a\\ｱ~");
}

TEST(TextEncoding, VendorCharactersAreKnown) {
  EXPECT_EQ(host::to_utf8("\x87\x40\x87\x8a"), "①㈱");
}

TEST(TextEncoding, LongTextsAreConvertedWhole) {
  std::string bytes;
  std::string text;
  for (int i = 0; i < 1000; ++i) {
    bytes += "\x8a\x4f";
    text += "外";
  }
  EXPECT_EQ(host::to_utf8(bytes), text);
}

TEST(TextEncoding, Utf8ThatIsNoShiftJisStays) {
  EXPECT_EQ(host::to_utf8("外筒"), "外筒");
}

TEST(TextEncoding, ACharacterCutInHalfIsReplaced) {
  EXPECT_EQ(host::to_utf8("\x8a\x4f\x93"), "外\uFFFD");
}

TEST(TextEncoding, BytesThatAreNeitherAreReplaced) {
  EXPECT_EQ(host::to_utf8("a\xff\x8a\x4f"), "a\uFFFD外");
}

TEST(TextEncoding, TellsUtf8) {
  EXPECT_TRUE(host::is_utf8("外筒"));
  EXPECT_FALSE(host::is_utf8("\x8a\x4f"));
  EXPECT_FALSE(host::is_utf8("\xe5\xa4"));
}

}  // namespace
