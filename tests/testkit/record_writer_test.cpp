// The writer's records, byte by byte.
#include "testkit/record_writer.h"

#include <cstdint>
#include <gtest/gtest.h>
#include <numeric>
#include <stdexcept>

#include "testkit/byte_sink.h"
#include "tests/testkit/hex.h"

namespace {

using testkit::Block;
using testkit::Precision;
using testkit::RecordWriter;
using testkit::StringSink;
using testkit::Title;

std::string bytes_of(const Block& block, std::int32_t shift = 0, std::int64_t split = 0) {
  StringSink sink;
  RecordWriter(sink).block(block, shift, split);
  return sink.bytes();
}

TEST(RecordWriter, WritesIdentificationAndVersion) {
  StringSink sink;
  RecordWriter writer(sink);
  writer.identification();
  writer.version();
  EXPECT_BYTES(sink.bytes(), "00000008 'VTRL-FLD' 00000008 00000004 00000004 00000004");
  EXPECT_EQ(writer.offset(), 28U);
}

TEST(RecordWriter, PadsTitlesToThirtyTwoCharacters) {
  StringSink sink;
  RecordWriter(sink).title("LS_Nodes");
  EXPECT_BYTES(sink.bytes(), "00000020 'LS_Nodes                        ' 00000020");
}

TEST(RecordWriter, WritesTitlesOfOtherLengthsOnRequest) {
  StringSink sink;
  RecordWriter writer(sink);
  writer.title(Title::exactly("LS"));
  writer.title("a title of more than 32 characters");
  EXPECT_BYTES(sink.bytes(), "00000002 'LS' 00000002 00000022 'a title of more than 32 characters' 00000022");
}

TEST(RecordWriter, WritesWrongMarkersOfTitles) {
  Title title("OverlapEnd");
  title.markers = {.leading = 7, .trailing = -1};
  StringSink sink;
  RecordWriter(sink).title(title);
  EXPECT_BYTES(sink.bytes(), "00000007 'OverlapEnd                      ' ffffffff");
}

TEST(RecordWriter, WritesRules) {
  StringSink sink;
  RecordWriter writer(sink);
  writer.rule({.width = 4, .per_record = 10, .n_records = 258});
  writer.end_rule();
  EXPECT_BYTES(sink.bytes(),
               "0000000c 00000004 0000000a 00000102 0000000c"
               "0000000c 00000000 00000000 00000000 0000000c");
}

TEST(RecordWriter, WritesIntegers) {
  EXPECT_BYTES(bytes_of(Block::integers({1, -2, 0x01020304})),
               "0000000c 00000004 00000003 00000001 0000000c"
               "0000000c 00000001 fffffffe 01020304 0000000c");
}

TEST(RecordWriter, WritesLongIntegersInEightOrFourBytes) {
  EXPECT_BYTES(bytes_of(Block::long_integer(0x0102030405060708)),
               "0000000c 00000008 00000001 00000001 0000000c"
               "00000008 0102030405060708 00000008");
  EXPECT_BYTES(bytes_of(Block::long_integer(-1, 4)),
               "0000000c 00000004 00000001 00000001 0000000c"
               "00000004 ffffffff 00000004");
}

TEST(RecordWriter, WritesRealsInBothPrecisions) {
  EXPECT_BYTES(bytes_of(Block::reals({1.0, -2.5, 1.0e30}, Precision::kSingle)),
               "0000000c 00000004 00000003 00000001 0000000c"
               "0000000c 3f800000 c0200000 7149f2ca 0000000c");
  EXPECT_BYTES(bytes_of(Block::reals({1.0, 1.0e30}, Precision::kDouble)),
               "0000000c 00000008 00000002 00000001 0000000c"
               "00000010 3ff0000000000000 46293e5939a08cea 00000010");
}

TEST(RecordWriter, WritesCharacters) {
  EXPECT_BYTES(bytes_of(Block::characters("inlet", 8)),
               "0000000c 00000001 00000008 00000001 0000000c"
               "00000008 'inlet   ' 00000008");
  EXPECT_BYTES(bytes_of(Block::characters("impeller", 3)),
               "0000000c 00000001 00000003 00000001 0000000c"
               "00000003 'imp' 00000003");
}

TEST(RecordWriter, CutsBlocksIntoRecords) {
  EXPECT_BYTES(bytes_of(Block::integers({1, 2, 3, 4, 5}).cut(2)),
               "0000000c 00000004 00000002 00000003 0000000c"
               "00000008 00000001 00000002 00000008"
               "00000008 00000003 00000004 00000008"
               "00000004 00000005 00000004");
  EXPECT_BYTES(bytes_of(Block::characters("abcd").cut(3)),
               "0000000c 00000001 00000003 00000002 0000000c"
               "00000003 'abc' 00000003 00000001 'd' 00000001");
}

TEST(RecordWriter, CutsWhereTheFileSaysUnlessTheBlockSaysOtherwise) {
  const Block three = Block::integers({1, 2, 3});
  EXPECT_BYTES(bytes_of(three, 0, 2),
               "0000000c 00000004 00000002 00000002 0000000c"
               "00000008 00000001 00000002 00000008 00000004 00000003 00000004");
  EXPECT_EQ(bytes_of(three, 0, 4), bytes_of(three));
  EXPECT_EQ(bytes_of(three.cut(3), 0, 2), bytes_of(three));
  // A block's own cut may be longer than the block.
  EXPECT_BYTES(bytes_of(three.cut(10)),
               "0000000c 00000004 0000000a 00000001 0000000c"
               "0000000c 00000001 00000002 00000003 0000000c");
}

TEST(RecordWriter, GivesEmptyBlocksARuleThatDoesNotEndTheSection) {
  EXPECT_BYTES(bytes_of(Block::integers({})), "0000000c 00000004 00000000 00000000 0000000c");
  EXPECT_BYTES(bytes_of(Block::reals({}, Precision::kDouble)),
               "0000000c 00000008 00000000 00000000 0000000c");
  EXPECT_BYTES(bytes_of(Block::characters("")), "0000000c 00000001 00000000 00000000 0000000c");
  EXPECT_BYTES(bytes_of(Block::integers({}).with_rule({4, 1, 0})),
               "0000000c 00000004 00000001 00000000 0000000c");
}

TEST(RecordWriter, ShiftsOnlyWhatIsAnIndex) {
  const auto values = [](testkit::IndexBase base) {
    return bytes_of(Block::integers({0, -1, 7}, base), 1).substr(20);
  };
  EXPECT_BYTES(values(testkit::IndexBase::kNone), "0000000c 00000000 ffffffff 00000007 0000000c");
  EXPECT_BYTES(values(testkit::IndexBase::kAll), "0000000c 00000001 00000000 00000008 0000000c");
  EXPECT_BYTES(values(testkit::IndexBase::kAllButMinusOne), "0000000c 00000001 ffffffff 00000008 0000000c");
}

TEST(RecordWriter, WritesWrongRulesAndMarkers) {
  Block block = Block::integer(5).with_rule({.width = 16, .per_record = -3, .n_records = 2});
  block.markers = {.leading = 0x7fffffff, .trailing = 0};
  EXPECT_BYTES(bytes_of(block),
               "0000000c 00000010 fffffffd 00000002 0000000c"
               "7fffffff 00000005 00000000");
}

TEST(RecordWriter, WritesLooseParts) {
  EXPECT_BYTES(bytes_of(Block::rule_alone({8, 3, 1})), "0000000c 00000008 00000003 00000001 0000000c");
  EXPECT_BYTES(bytes_of(Block::record_alone("xyz")), "00000003 'xyz' 00000003");
  EXPECT_BYTES(bytes_of(Block::raw("xyz")), "'xyz'");
}

TEST(RecordWriter, AsksAFunctionForValuesPieceByPiece) {
  constexpr std::int64_t kCount = 100'000;
  std::size_t largest_piece = 0;
  std::int64_t expected_first = 0;
  const testkit::Ints counting(kCount, [&](std::int64_t first, std::span<std::int32_t> out) {
    EXPECT_EQ(first, expected_first);
    expected_first += std::ssize(out);
    largest_piece = std::max(largest_piece, out.size());
    for (std::int32_t& value : out) value = static_cast<std::int32_t>(first++);
  });
  std::vector<std::int32_t> list(kCount);
  std::iota(list.begin(), list.end(), 0);
  EXPECT_EQ(bytes_of(Block::integers(counting)), bytes_of(Block::integers(list)));
  EXPECT_EQ(expected_first, kCount);
  EXPECT_LE(largest_piece, 32768U);
}

TEST(RecordWriter, CutsFunctionsLikeLists) {
  const testkit::Reals squares(70'000, [](std::int64_t first, std::span<double> out) {
    for (double& value : out) {
      value = static_cast<double>(first * first);
      ++first;
    }
  });
  std::vector<double> list(70'000);
  squares.read(0, list);
  EXPECT_EQ(list[69'999], 69'999.0 * 69'999.0);
  for (const std::int64_t cut : {1LL, 999LL, 32'768LL, 40'000LL}) {
    EXPECT_EQ(bytes_of(Block::reals(squares).cut(cut)), bytes_of(Block::reals(list).cut(cut))) << cut;
  }
}

TEST(RecordWriter, WritesHolesAsZeros) {
  EXPECT_BYTES(bytes_of(Block::reals(testkit::Reals::hole(3)).cut(2)),
               "0000000c 00000004 00000002 00000002 0000000c"
               "00000008 00000000 00000000 00000008 00000004 00000000 00000004");
}

TEST(RecordWriter, RefusesNumbersOfOtherWidths) {
  Block block = Block::integer(1);
  block.width = 2;
  EXPECT_THROW(bytes_of(block), std::invalid_argument);
}

TEST(Source, ReadsSeveralListsAsOne) {
  const auto joined =
      testkit::concatenate<std::int32_t>({{1, 2}, {}, {3}, testkit::Ints::hole(2), {4, 5, 6}});
  ASSERT_EQ(joined.size(), 8);
  std::vector<std::int32_t> all(8);
  joined.read(0, all);
  EXPECT_EQ(all, (std::vector<std::int32_t>{1, 2, 3, 0, 0, 4, 5, 6}));
  std::vector<std::int32_t> middle(4);
  joined.read(2, middle);
  EXPECT_EQ(middle, (std::vector<std::int32_t>{3, 0, 0, 4}));
}

TEST(Source, OnlyAListCanBeChanged) {
  testkit::Ints list{1, 2};
  list.values()[1] = 5;
  EXPECT_EQ(list.values().back(), 5);
  auto hole = testkit::Ints::hole(3);
  EXPECT_THROW(hole.values(), std::logic_error);
}

}  // namespace
