// Reads where the host's byte order is the files': whatever the width, they are those of fread.
#include <array>
#include <cstdint>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "support/byte_order.h"
#include "tests/support/recording_stream.h"
#include "tests/testkit/hex.h"

namespace {

TEST(PlainReads, ElementsOfAnyWidthStayAsInTheFile) {
  for (const size_t width : {2U, 3U, 4U, 5U, 8U, 16U}) {
    RecordingStream source("0123456789abcdef0123456789abcdef");
    std::string out(2 * width, '?');
    fld::cnvt_fread(out.data(), width, 2, source.stream());
    EXPECT_EQ(out, std::string("0123456789abcdef0123456789abcdef").substr(0, 2 * width)) << width;
  }
}

TEST(PlainReads, NothingBeyondTheElementsIsWrittenOrRead) {
  RecordingStream source("abcdefghi");
  std::string out = "########";
  fld::cnvt_fread(out.data(), 4, 1, source.stream());
  EXPECT_EQ(out, "abcd####");
  fld::cnvt_fread(out.data(), 3, 1, source.stream());
  EXPECT_EQ(out, "efgd####");
  EXPECT_EQ(fgetc(source.stream()), 'h');
}

TEST(PlainReads, AnArrayIsReadAtOnce) {
  RecordingStream source(std::string(4000, '\0'));
  std::vector<int32_t> values(1000);
  fld::cnvt_fread(values.data(), 4, 1000, source.stream());
  EXPECT_EQ(source.reads(), (std::vector<size_t>{4000}));
}

TEST(PlainReads, ReturnTheElementsRead) {
  const auto result = [](size_t size, size_t n) {
    RecordingStream source(std::string(size * n, '\0'));
    std::string out(size * n, '\0');
    return fld::cnvt_fread(out.data(), size, n, source.stream());
  };
  EXPECT_EQ(result(4, 1), 1U);
  EXPECT_EQ(result(4, 1000), 1000U);
  EXPECT_EQ(result(8, 100), 100U);
  EXPECT_EQ(result(3, 86), 86U);
}

TEST(PlainReads, AShortReadLeavesTheRestOfTheBuffer) {
  RecordingStream source(hex("00000001 0000"));
  std::array<uint32_t, 3> values = {9, 9, 9};
  EXPECT_EQ(fld::cnvt_fread(values.data(), 4, 3, source.stream()), 1U);
  EXPECT_EQ(values[0], 1U);
  EXPECT_EQ(values[2], 9U);
  EXPECT_NE(feof(source.stream()), 0);
}

}  // namespace
