// Byte order, and reads on hosts of either order.
#include "support/byte_order.h"

#include <array>
#include <cstdint>
#include <gtest/gtest.h>
#include <string>
#include <string_view>
#include <vector>

#include "tests/support/recording_stream.h"
#include "tests/testkit/hex.h"

namespace {

template <class Value>
Value first_of(std::string_view file_in_hex) {
  Value value = {};
  RecordingStream source(hex(file_in_hex));
  fld::cnvt_fread(&value, sizeof value, 1, source.stream());
  return value;
}

TEST(ByteOrder, FilesAreReadAsBigEndianAndWouldBeWrittenAsLittleEndian) {
  EXPECT_EQ(fld::get_endian_read(), 0);
  EXPECT_EQ(fld::get_endian_write(), 1);
}

TEST(CnvtFread, IntegersComeInTheHostsOrder) {
  EXPECT_EQ(first_of<int32_t>("00000100"), 256);
  EXPECT_EQ(first_of<int32_t>("fffffffe"), -2);
  EXPECT_EQ(first_of<int16_t>("0102"), 258);
  EXPECT_EQ(first_of<int64_t>("0000000100000000"), 4294967296);
}

TEST(CnvtFread, FloatsComeInTheHostsOrder) {
  EXPECT_EQ(first_of<double>("3ff0000000000000"), 1.0);
  EXPECT_EQ(first_of<float>("3f800000"), 1.0F);
  EXPECT_EQ(first_of<double>("c0091eb851eb851f"), -3.14);
}

TEST(CnvtFread, EveryElementIsTurnedRoundByItself) {
  std::array<int32_t, 3> values = {};
  RecordingStream source(hex("00000001 00000002 ffffffff"));
  fld::cnvt_fread(values.data(), 4, 3, source.stream());
  EXPECT_EQ(values, (std::array<int32_t, 3>{1, 2, -1}));
}

TEST(CnvtFread, BytesArePassedThrough) {
  RecordingStream source("VTRL-FLD");
  std::string out(8, '?');
  fld::cnvt_fread(out.data(), 1, 8, source.stream());
  EXPECT_EQ(out, "VTRL-FLD");
}

TEST(CnvtFread, BytesAreReadAtOnce) {
  RecordingStream source(std::string(1000, 'x'));
  std::string out(1000, '\0');
  EXPECT_EQ(fld::cnvt_fread(out.data(), 1, 1000, source.stream()), 1000U);
  EXPECT_EQ(source.reads(), (std::vector<size_t>{1000}));
}

TEST(CnvtFread, NoElementsReadNothing) {
  RecordingStream source("abcd");
  std::string out = "####";
  EXPECT_EQ(fld::cnvt_fread(out.data(), 4, 0, source.stream()), 0U);
  EXPECT_EQ(fld::cnvt_fread(out.data(), 3, 0, source.stream()), 0U);
  EXPECT_EQ(fld::cnvt_fread(out.data(), 1, 0, source.stream()), 0U);
  EXPECT_EQ(out, "####");
  EXPECT_EQ(fgetc(source.stream()), 'a');
}

TEST(CnvtFread, ElementsOfNoBytesReadNothing) {
  RecordingStream source("abcd");
  char out = '#';
  EXPECT_EQ(fld::cnvt_fread(&out, 0, 10, source.stream()), 0U);
  EXPECT_EQ(out, '#');
  EXPECT_EQ(fgetc(source.stream()), 'a');
}

TEST(CnvtFread, AfterAShortReadTheNextReadGoesOnWithTheFile) {
  RecordingStream source(hex("00000001 00000002 00000003"));
  source.end_once_at(4);
  std::array<uint32_t, 2> values = {};
  fld::cnvt_fread(values.data(), 4, 2, source.stream());
  EXPECT_EQ(values[0], 1U);
  clearerr(source.stream());
  fld::cnvt_fread(values.data(), 4, 2, source.stream());
  EXPECT_EQ(values, (std::array<uint32_t, 2>{2, 3}));
  EXPECT_EQ(feof(source.stream()), 0);
}

TEST(CnvtFread, AShortReadOfBytesGivesTheirCountAndTheEndOfFile) {
  RecordingStream source("abc");
  std::string out = "#####";
  EXPECT_EQ(fld::cnvt_fread(out.data(), 1, 5, source.stream()), 3U);
  EXPECT_EQ(out, "abc##");
  EXPECT_NE(feof(source.stream()), 0);
}

TEST(CnvtTrimright, TurnsThePaddingOfAWordIntoNul) {
  std::string field = "pressure" + std::string(24, ' ');
  fld::cnvt_trimright(field.data(), 32);
  EXPECT_EQ(field, "pressure" + std::string(24, '\0'));
}

TEST(CnvtTrimright, ChangesNothingWithoutTrailingBlanks) {
  std::string field = "  a b";
  fld::cnvt_trimright(field.data(), 5);
  EXPECT_EQ(field, "  a b");
}

TEST(CnvtTrimright, KeepsBlanksInsideAndInFront) {
  std::string field = "  a b  ";
  fld::cnvt_trimright(field.data(), 7);
  EXPECT_EQ(field, std::string("  a b\0\0", 7));
}

TEST(CnvtTrimright, EmptiesAFieldOfBlanks) {
  std::string field = "#    ";
  fld::cnvt_trimright(field.data() + 1, 4);
  EXPECT_EQ(field, std::string("#\0\0\0\0", 5));
}

TEST(CnvtTrimright, StopsAtANul) {
  std::string field("a \0  ", 5);
  fld::cnvt_trimright(field.data(), 5);
  EXPECT_EQ(field, std::string("a \0\0\0", 5));
}

TEST(CnvtTrimright, TakesOnlyBlanksForBlanks) {
  std::string field = "a\t \n";
  fld::cnvt_trimright(field.data(), 4);
  EXPECT_EQ(field, "a\t \n");
}

TEST(CnvtTrimright, LooksAtNoMoreThanTheField) {
  std::string field = "ab    ";
  fld::cnvt_trimright(field.data(), 4);
  EXPECT_EQ(field, std::string("ab\0\0  ", 6));
  std::string one = " x";
  fld::cnvt_trimright(one.data(), 1);
  EXPECT_EQ(one, std::string("\0x", 2));
}

TEST(CnvtTrimright, AFieldOfNoCharactersTouchesNothing) {
  std::string field = "  ";
  fld::cnvt_trimright(field.data() + 1, 0);
  EXPECT_EQ(field, "  ");
}

}  // namespace
