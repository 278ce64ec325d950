// The buffer after a short read, where the host's byte order is not the files'. Callers check the stream's
// state; the buffer's content is at least deterministic.
#include <array>
#include <cstdint>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "support/byte_order.h"
#include "tests/support/recording_stream.h"
#include "tests/testkit/hex.h"

namespace {

// Leaves these bytes at the beginning of the staging buffer.
void stage(const std::string& bytes) {
  RecordingStream source(bytes);
  std::string out(bytes.size(), '\0');
  fld::cnvt_fread(out.data(), bytes.size(), 1, source.stream());
}

TEST(ShortReads, TheRestComesFromTheStagingBuffer) {
  stage(hex("1122334455667788"));
  RecordingStream source(hex("aabb"));
  std::array<uint32_t, 2> values = {};
  fld::cnvt_fread(values.data(), 4, 2, source.stream());
  EXPECT_EQ(values[0], 0xaabb3344U);
  EXPECT_EQ(values[1], 0x55667788U);
  EXPECT_NE(feof(source.stream()), 0);
}

TEST(ShortReads, AnEmptyFileGivesTheStagingBufferAlone) {
  stage(hex("1122334455667788"));
  RecordingStream source("");
  std::array<uint16_t, 4> values = {};
  fld::cnvt_fread(values.data(), 2, 4, source.stream());
  EXPECT_EQ(values, (std::array<uint16_t, 4>{0x1122, 0x3344, 0x5566, 0x7788}));
}

TEST(ShortReads, NoFurtherChunkIsReadAfterOne) {
  // Three chunks are requested; the source returns nothing once, 44 bytes into the second.
  RecordingStream source(std::string(256, '\x11') + std::string(512, '\x22'));
  source.end_once_at(300);
  std::vector<uint32_t> values(192);
  EXPECT_EQ(fld::cnvt_fread(values.data(), 4, 192, source.stream()), 256U);
  EXPECT_EQ(source.reads(), (std::vector<size_t>{256, 256}));

  std::vector<uint32_t> expected(64, 0x11111111);
  for (int chunk = 0; chunk < 2; ++chunk) {
    expected.insert(expected.end(), 11, 0x22222222);
    expected.insert(expected.end(), 53, 0x11111111);
  }
  EXPECT_EQ(values, expected);
}

TEST(ShortReads, NoFurtherChunkIsReadAfterOneOfAnOddWidth) {
  RecordingStream source(std::string(900, 'x'));
  source.end_once_at(256);
  std::string out(900, '\0');
  EXPECT_EQ(fld::cnvt_fread(out.data(), 3, 300, source.stream()), 132U);
  EXPECT_EQ(source.reads(), (std::vector<size_t>{256, 256}));
  EXPECT_EQ(out, std::string(900, 'x'));
}

TEST(ShortReads, NoFurtherChunkIsReadAfterAnError) {
  RecordingStream source(std::string(1024, 'x'));
  source.fail_once_at(256);
  std::vector<double> values(128);
  fld::cnvt_fread(values.data(), 8, 128, source.stream());
  EXPECT_EQ(source.reads(), (std::vector<size_t>{256, 256}));
  EXPECT_NE(ferror(source.stream()), 0);
  EXPECT_EQ(feof(source.stream()), 0);
}

}  // namespace
