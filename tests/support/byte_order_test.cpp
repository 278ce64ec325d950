// Byte order, and reads with byte swap.
#include "support/byte_order.h"

#include <array>
#include <cstdint>
#include <cstring>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "tests/support/recording_stream.h"
#include "tests/testkit/hex.h"

namespace {

// `n` elements of `size` bytes, as in memory after reading.
std::string elements_of(const std::string& file, size_t size, size_t n) {
  RecordingStream source(file);
  std::string out(size * n, '?');
  fld::cnvt_fread(out.data(), size, n, source.stream());
  return out;
}

template <class Value>
Value first_of(std::string_view file_in_hex) {
  Value value = {};
  RecordingStream source(hex(file_in_hex));
  fld::cnvt_fread(&value, sizeof value, 1, source.stream());
  return value;
}

// Bytes 0, 1, 2, ... 255, 0, 1, ...
std::string counting_bytes(size_t count) {
  std::string bytes(count, '\0');
  for (size_t i = 0; i < count; ++i) bytes[i] = static_cast<char>(i);
  return bytes;
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

TEST(CnvtFread, AnOddWidthIsTurnedRoundWithItsMiddleInPlace) {
  EXPECT_EQ(elements_of("abc", 3, 1), "cba");
  EXPECT_EQ(elements_of("abcdefghij", 5, 2), "edcbajihgf");
}

TEST(CnvtFread, WidthsThatNoNumberHasAreTurnedRoundToo) {
  EXPECT_EQ(elements_of("abcdef", 6, 1), "fedcba");
  EXPECT_EQ(elements_of("0123456789abcdef", 16, 1), "fedcba9876543210");
}

TEST(CnvtFread, AnElementAcrossTheEndOfAChunkStaysWhole) {
  // 86 elements of 3 bytes: the last one has its first byte in the first chunk of 256.
  std::string file(255, '-');
  file += "abc";
  const std::string read = elements_of(file, 3, 86);
  EXPECT_EQ(read.substr(0, 255), std::string(255, '-'));
  EXPECT_EQ(read.substr(255), "cba");
  // Of 7 bytes, the 37th has four.
  file.assign(252, '-');
  file += "abcdefg";
  EXPECT_EQ(elements_of(file, 7, 37).substr(252), "gfedcba");
}

TEST(CnvtFread, AnElementMayBeLargerThanAChunk) {
  const std::string file = counting_bytes(600);
  const std::string read = elements_of(file, 300, 2);
  const std::string first(file.rbegin() + 300, file.rend());
  const std::string second(file.rbegin(), file.rbegin() + 300);
  EXPECT_EQ(to_hex(read.substr(0, 300)), to_hex(first));
  EXPECT_EQ(to_hex(read.substr(300)), to_hex(second));
}

TEST(CnvtFread, BytesArePassedThrough) {
  EXPECT_EQ(elements_of("VTRL-FLD", 1, 8), "VTRL-FLD");
}

TEST(CnvtFread, NothingBeyondTheElementsIsWrittenOrRead) {
  RecordingStream source("abcdefghi");
  std::string out = "########";
  fld::cnvt_fread(out.data(), 4, 1, source.stream());
  EXPECT_EQ(out, "dcba####");
  fld::cnvt_fread(out.data(), 3, 1, source.stream());
  EXPECT_EQ(out, "gfea####");
  EXPECT_EQ(fgetc(source.stream()), 'h');
}

TEST(CnvtFread, AReadOfThousandIntsTakesSixteenChunks) {
  RecordingStream source(std::string(4000, '\0'));
  std::vector<int32_t> values(1000);
  fld::cnvt_fread(values.data(), 4, 1000, source.stream());
  std::vector<size_t> chunks(15, 256);
  chunks.push_back(160);
  EXPECT_EQ(source.reads(), chunks);
}

TEST(CnvtFread, OddWidthsAreReadInTheSameChunks) {
  RecordingStream source(std::string(1000, '\0'));
  std::string out(600, '\0');
  fld::cnvt_fread(out.data(), 3, 200, source.stream());
  EXPECT_EQ(source.reads(), (std::vector<size_t>{256, 256, 88}));
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

TEST(CnvtFread, ReturnsThePositionInItsStagingBuffer) {
  const auto result = [](size_t size, size_t n) {
    RecordingStream source(std::string(size * n, '\0'));
    std::string out(size * n, '\0');
    return fld::cnvt_fread(out.data(), size, n, source.stream());
  };
  EXPECT_EQ(result(4, 1), 4U);
  EXPECT_EQ(result(4, 64), 256U);
  EXPECT_EQ(result(4, 65), 4U);
  EXPECT_EQ(result(4, 1000), 160U);
  EXPECT_EQ(result(8, 100), 32U);
  EXPECT_EQ(result(2, 128), 256U);
  EXPECT_EQ(result(3, 1), 3U);
  EXPECT_EQ(result(3, 86), 2U);
  EXPECT_EQ(result(3, 100), 44U);
  EXPECT_EQ(result(300, 2), 88U);
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
