// Reads where the host's byte order is not the files'.
#include <cstdint>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "support/byte_order.h"
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

// Bytes 0, 1, 2, ... 255, 0, 1, ...
std::string counting_bytes(size_t count) {
  std::string bytes(count, '\0');
  for (size_t i = 0; i < count; ++i) bytes[i] = static_cast<char>(i);
  return bytes;
}

TEST(SwappedReads, AnOddWidthIsTurnedRoundWithItsMiddleInPlace) {
  EXPECT_EQ(elements_of("abc", 3, 1), "cba");
  EXPECT_EQ(elements_of("abcdefghij", 5, 2), "edcbajihgf");
}

TEST(SwappedReads, WidthsThatNoNumberHasAreTurnedRoundToo) {
  EXPECT_EQ(elements_of("abcdef", 6, 1), "fedcba");
  EXPECT_EQ(elements_of("0123456789abcdef", 16, 1), "fedcba9876543210");
}

TEST(SwappedReads, AnElementAcrossTheEndOfAChunkStaysWhole) {
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

TEST(SwappedReads, AnElementMayBeLargerThanAChunk) {
  const std::string file = counting_bytes(600);
  const std::string read = elements_of(file, 300, 2);
  const std::string first(file.rbegin() + 300, file.rend());
  const std::string second(file.rbegin(), file.rbegin() + 300);
  EXPECT_EQ(to_hex(read.substr(0, 300)), to_hex(first));
  EXPECT_EQ(to_hex(read.substr(300)), to_hex(second));
}

TEST(SwappedReads, NothingBeyondTheElementsIsWrittenOrRead) {
  RecordingStream source("abcdefghi");
  std::string out = "########";
  fld::cnvt_fread(out.data(), 4, 1, source.stream());
  EXPECT_EQ(out, "dcba####");
  fld::cnvt_fread(out.data(), 3, 1, source.stream());
  EXPECT_EQ(out, "gfea####");
  EXPECT_EQ(fgetc(source.stream()), 'h');
}

TEST(SwappedReads, AReadOfThousandIntsTakesSixteenChunks) {
  RecordingStream source(std::string(4000, '\0'));
  std::vector<int32_t> values(1000);
  fld::cnvt_fread(values.data(), 4, 1000, source.stream());
  std::vector<size_t> chunks(15, 256);
  chunks.push_back(160);
  EXPECT_EQ(source.reads(), chunks);
}

TEST(SwappedReads, OddWidthsAreReadInTheSameChunks) {
  RecordingStream source(std::string(1000, '\0'));
  std::string out(600, '\0');
  fld::cnvt_fread(out.data(), 3, 200, source.stream());
  EXPECT_EQ(source.reads(), (std::vector<size_t>{256, 256, 88}));
}

TEST(SwappedReads, ReturnsThePositionInItsStagingBuffer) {
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

}  // namespace
