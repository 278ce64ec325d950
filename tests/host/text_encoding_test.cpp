#include "host/text_encoding.h"

#include "gtest/gtest.h"
#include <cstddef>
#include <malloc.h>
#include <string>

#include "tests/testkit/emulator.h"

namespace {

TEST(TextEncoding, AsciiStaysAsItIs) {
  EXPECT_EQ(host::to_utf8("a\\b~c"), "a\\b~c");
  EXPECT_EQ(host::to_utf8(""), "");
}

TEST(TextEncoding, ShiftJisBecomesUtf8) {
  if (kUnderEmulator) GTEST_SKIP() << kWithoutConverters;
  // The second byte of the third character is a backslash.
  EXPECT_EQ(host::to_utf8("\x8a\x4f\x93\x9b\x95\x5c\x96\xca"), "外筒表面");
  EXPECT_EQ(host::to_utf8("a\\\xb1~"), "a\\ｱ~");
}

TEST(TextEncoding, VendorCharactersAreKnown) {
  if (kUnderEmulator) GTEST_SKIP() << kWithoutConverters;
  EXPECT_EQ(host::to_utf8("\x87\x40\x87\x8a"), "①㈱");
}

TEST(TextEncoding, LongTextsAreConvertedWhole) {
  if (kUnderEmulator) GTEST_SKIP() << kWithoutConverters;
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
  if (kUnderEmulator) GTEST_SKIP() << kWithoutConverters;
  EXPECT_EQ(host::to_utf8("\x8a\x4f\x93"), "外\uFFFD");
}

TEST(TextEncoding, BytesThatAreNeitherAreReplaced) {
  if (kUnderEmulator) GTEST_SKIP() << kWithoutConverters;
  EXPECT_EQ(host::to_utf8("a\xff\x8a\x4f"), "a\uFFFD外");
  EXPECT_EQ(host::to_utf8("a\x80"), "a\uFFFD");
}

// As Shift_JIS the bytes of this name would be others.
TEST(TextEncoding, MessagesStayUtf8) {
  if (kUnderEmulator) GTEST_SKIP() << kWithoutConverters;
  const std::string path = "FILE NOT FOUND : /data/ポンプ室.fld";
  EXPECT_NE(host::to_utf8(path), path);
  EXPECT_EQ(host::message_to_utf8(path), path);
  EXPECT_EQ(host::message_to_utf8("/data/\x8a\x4f.fld"), "/data/外.fld");
  EXPECT_EQ(host::message_to_utf8("a\xff"), "a\uFFFD");
  EXPECT_EQ(host::message_to_utf8(""), "");
}

TEST(TextEncoding, ControlCharactersBecomeSpaces) {
  EXPECT_EQ(host::without_controls("a\x1b[31mb\r\nc\td\x7f"), "a [31mb  c d ");
  EXPECT_EQ(host::without_controls(std::string("a\0b", 3)), "a b");
  // U+0080, U+009B and U+009F are control characters; other characters with the same lead byte are not.
  EXPECT_EQ(host::without_controls("a\u0080b\u009b1mc\u009fd"), "a b 1mc d");
  EXPECT_EQ(host::without_controls("\u00a0\u00b5\u0440外\xc2"), "\u00a0\u00b5\u0440外\xc2");
}

TEST(TextEncoding, PrintableNames) {
  if (kUnderEmulator) GTEST_SKIP() << kWithoutConverters;
  EXPECT_EQ(host::printable("\x8a\x4f\x1b[2J"), "外 [2J");
}

TEST(TextEncoding, ConvertingHoldsNoMemory) {
  if (kUnderEmulator) GTEST_SKIP() << kWithoutConverters;
  const auto convert = [] { return host::to_utf8("\x8a\x4f"); };
  convert();
  const std::size_t before = mallinfo2().uordblks;
  for (int i = 0; i < 1000; ++i) convert();
  EXPECT_LT(mallinfo2().uordblks, before + 10'000);
}

TEST(TextEncoding, TellsUtf8) {
  EXPECT_TRUE(host::is_utf8("外筒"));
  EXPECT_FALSE(host::is_utf8("\x8a\x4f"));
  EXPECT_FALSE(host::is_utf8("\xe5\xa4"));
}

// The first and last character of each length, and what is beside them.
TEST(TextEncoding, TellsUtf8AtTheEdges) {
  for (const char* text : {"\x7f", "\xc2\x80", "\xdf\xbf", "\xe0\xa0\x80", "\xed\x9f\xbf", "\xee\x80\x80",
                           "\xef\xbf\xbf", "\xf0\x90\x80\x80", "\xf4\x8f\xbf\xbf"}) {
    EXPECT_TRUE(host::is_utf8(text)) << testing::PrintToString(std::string(text));
  }
  for (const char* bytes :
       {"\x80", "\xbf", "\xc1\xbf", "\xc2", "\xc2\x7f", "\xc2\xc0", "\xdf ",         // two bytes
        "\xe0\x9f\xbf", "\xed\xa0\x80", "\xe1\x80", "\xe1\x7f\x80", "\xe1\x80\xc0",  // three
        "\xf0\x8f\xbf\xbf", "\xf4\x90\x80\x80", "\xf5\x80\x80\x80", "\xf1\x80\x80",  // four
        "\xf1\x80\x7f\x80", "\xf1\x80\x80\xc0", "\xff"}) {
    EXPECT_FALSE(host::is_utf8(bytes)) << testing::PrintToString(std::string(bytes));
  }
}

}  // namespace
