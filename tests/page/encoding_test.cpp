#include "page/encoding.h"

#include "gtest/gtest.h"
#include <cmath>
#include <limits>
#include <string>
#include <vector>

#include "tests/page/unpacked.h"

namespace {

using page::Bytes;
using page::Range;

constexpr float kNaN = std::numeric_limits<float>::quiet_NaN();
constexpr float kInfinity = std::numeric_limits<float>::infinity();

Bytes bytes_of(std::initializer_list<int> values) {
  Bytes bytes;
  for (const int value : values) bytes.push_back(static_cast<char>(value));
  return bytes;
}

TEST(PageRange, LeavesOutWhatIsNotFinite) {
  const Range range = page::range_of(std::vector<float>{kNaN, 3, -1, kInfinity, 2});
  EXPECT_EQ(range.low, -1);
  EXPECT_EQ(range.high, 3);
}

TEST(PageRange, OfNothingIsNoNumber) {
  EXPECT_TRUE(std::isnan(page::range_of(std::vector<float>{kNaN}).low));
}

// Codes 0, 65534, 65535 (undefined), 32767; differences 0, -2 (mod 65536), 1, -32768 in zigzag 0, 3, 2,
// 65535; low bytes first.
TEST(PageNumbers, AreDifferencesOfCodesInTwoPlanes) {
  Bytes bytes;
  page::append_numbers(bytes, std::vector<float>{0, 65534, kNaN, 32767}, {0, 65534}, 16);
  EXPECT_EQ(bytes, bytes_of({0, 3, 2, 255, 0, 0, 0, 255}));
}

// With 10 bits the codes are 0 to 1022, and 1023 is undefined.
TEST(PageNumbers, HaveFewerCodesWithFewerBits) {
  Bytes bytes;
  page::append_numbers(bytes, std::vector<float>{-1, 1, kInfinity}, {-1, 1}, 10);
  EXPECT_EQ(bytes, bytes_of({0, 2044 & 255, 2, 0, 2044 >> 8, 0}));
}

TEST(PageNumbers, OfOneValueAreAllTheLowest) {
  Bytes bytes;
  page::append_numbers(bytes, std::vector<float>{7, 7}, {7, 7}, 16);
  EXPECT_EQ(bytes, bytes_of({0, 0, 0, 0}));
}

// 1.0f is 3f800000, -2.0f is c0000000.
TEST(PageNumbers, InFullKeepAllBytes) {
  Bytes bytes;
  page::append_numbers(bytes, std::vector<float>{1, -2}, {}, 0);
  EXPECT_EQ(bytes, bytes_of({0, 0, 0, 0, 0x80, 0, 0x3f, 0xc0}));
}

TEST(PageVarint, HasSevenBitsPerByte) {
  Bytes bytes;
  page::append_varint(bytes, 127);
  page::append_varint(bytes, 128);
  page::append_varint(bytes, 300);
  EXPECT_EQ(bytes, bytes_of({127, 0x80, 1, 0xac, 2}));
}

// Runs: one of 2 triangles, one of 1 quadrilateral. Corners 0 1 2, 1 3 2, 2 3 4 0 as differences from the
// face before.
TEST(PageFaces, AreRunsAndDifferences) {
  const page::Faces faces = {.sizes = {3, 3, 4},
                             .corners = {0, 1, 2, 1, 3, 2, 2, 3, 4, 0},
                             .elements = {5, 6, 3},
                             .nodes = {1, 2, 4, 9, 10}};
  Bytes bytes;
  page::append_faces(bytes, faces);
  EXPECT_EQ(bytes, bytes_of({2,  2, 3, 1,  4,                 // runs
                             0,  2, 4, 2,  4, 0, 2, 0, 4, 0,  // corners
                             10, 2, 5,                        // elements
                             2,  2, 4, 10, 2}));              // nodes
}

TEST(PagePack, IsZlibInBase64) {
  for (const std::string& text :
       {std::string(), std::string("a"), std::string("ab"), std::string(70000, 'x')})
    EXPECT_EQ(page_test::unpacked(page::pack(text)), text);
}

}  // namespace
