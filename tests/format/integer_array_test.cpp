// Data blocks of integers.
#include <algorithm>
#include <array>
#include <cstdint>
#include <gtest/gtest.h>
#include <limits>
#include <numeric>
#include <string>
#include <vector>

#include "format/data_block.h"
#include "tests/format/input.h"
#include "tests/support/empty_list.h"
#include "tests/support/thrown_message.h"

namespace {

using testkit::Block;
using testkit::Rule;

using IntArray = EmptyList;
using Int64Array = EmptyList;
using NewIntArray = EmptyList;
using SingleInt = EmptyList;

const testkit::Ints kOneToTen = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10};

// `n` values read into an array filled with -7, with two more entries after it.
std::vector<int> ints(const std::string& bytes, int n) {
  const Input input(bytes + kNext);
  std::vector<int> values(static_cast<size_t>(n) + 2, -7);
  fld::FLDV4_I_INTarray(input.stream(), n, values.data());
  EXPECT_EQ(input.rest(), kNext);
  EXPECT_EQ(values[values.size() - 2], -7) << "written behind the array";
  EXPECT_EQ(values.back(), -7) << "written behind the array";
  values.resize(static_cast<size_t>(n));
  return values;
}

std::vector<long> longs(const std::string& bytes, int n) {
  const Input input(bytes + kNext);
  std::vector<long> values(static_cast<size_t>(n) + 1, -7);
  fld::FLDV4_I_INT64array(input.stream(), n, values.data());
  EXPECT_EQ(input.rest(), kNext);
  EXPECT_EQ(values.back(), -7) << "written behind the array";
  values.resize(static_cast<size_t>(n));
  return values;
}

std::string int_error(const std::string& bytes, long n) {
  const Input input(bytes);
  std::vector<int> values(100);
  return thrown_message([&] { fld::FLDV4_I_INTarray(input.stream(), n, values.data()); });
}

std::string long_error(const std::string& bytes, long n) {
  const Input input(bytes);
  std::vector<long> values(100);
  return thrown_message([&] { fld::FLDV4_I_INT64array(input.stream(), n, values.data()); });
}

std::string new_array_error(const std::string& bytes, long n) {
  const Input input(bytes);
  std::string message = thrown_message([&] { fld::read_int_array(input.stream(), n, 1100440); });
  EXPECT_EQ(fld::memory, nullptr) << "the array was kept";
  return message;
}

TEST_F(IntArray, OfTenIsReadFromRecordsOfFourFourAndTwo) {
  EXPECT_EQ(ints(bytes_of(Block::integers(kOneToTen).cut(4)), 10),
            (std::vector<int>{1, 2, 3, 4, 5, 6, 7, 8, 9, 10}));
}

TEST_F(IntArray, IsReadFromOneRecordOrFromOnePerElement) {
  const std::vector<int> expected = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10};
  EXPECT_EQ(ints(bytes_of(Block::integers(kOneToTen)), 10), expected);
  EXPECT_EQ(ints(bytes_of(Block::integers(kOneToTen).cut(1)), 10), expected);
}

TEST_F(IntArray, HasSignedElements) {
  EXPECT_EQ(ints(bytes_of(Block::integers({-1, 0x7fffffff, -0x7fffffff - 1})), 3),
            (std::vector<int>{-1, 0x7fffffff, -0x7fffffff - 1}));
}

TEST_F(IntArray, TheWidthIsNotLookedAt) {
  EXPECT_EQ(ints(bytes_of(Block::integers({1, 2}).with_rule({8, 2, 1})), 2), (std::vector<int>{1, 2}));
  EXPECT_EQ(ints(bytes_of(Block::integers({1, 2}).with_rule({-3, 2, 1})), 2), (std::vector<int>{1, 2}));
}

TEST_F(IntArray, ARecordMayHoldFewerElementsThanTheRuleSays) {
  EXPECT_EQ(ints(bytes_of(Block::integers({1, 2}).with_rule({4, 1000, 1})), 2), (std::vector<int>{1, 2}));
}

TEST_F(IntArray, MarkersOfRecordsAreNotLookedAt) {
  Block block = Block::integers({1, 2, 3}).cut(2);
  block.markers = {.leading = -1, .trailing = 99};
  EXPECT_EQ(ints(bytes_of(block), 3), (std::vector<int>{1, 2, 3}));
}

TEST_F(IntArray, WithoutRecordsReadsNothing) {
  EXPECT_EQ(ints(bytes_of(Rule{4, 3, 0}), 3), (std::vector<int>{-7, -7, -7}));
  EXPECT_EQ(ints(bytes_of(Rule{4, 3, -1}), 3), (std::vector<int>{-7, -7, -7}));
}

TEST_F(IntArray, ElementsThatTheFileDoesNotGiveKeepTheirValue) {
  EXPECT_EQ(ints(bytes_of(Block::integers({1, 2, 3, 4}).cut(2)), 6), (std::vector<int>{1, 2, 3, 4, -7, -7}));
}

TEST_F(IntArray, OfNoElementsMayHaveAnEmptyRecord) {
  EXPECT_EQ(ints(bytes_of(Block::integers({})), 0), std::vector<int>());
  EXPECT_EQ(ints(bytes_of(Rule{4, 0, 1}) + std::string(8, '\0'), 0), std::vector<int>());
}

TEST_F(IntArray, ARecordWithoutElementsMayFollowTheLastElement) {
  const std::string empty(8, '\0');
  EXPECT_EQ(ints(bytes_of(Rule{4, 3, 1}) + empty, 0), std::vector<int>());
  const std::string block = bytes_of(Block::integers({1, 2, 3, 4}).cut(2).with_rule({4, 2, 3}));
  EXPECT_EQ(ints(block + empty, 4), (std::vector<int>{1, 2, 3, 4}));
}

TEST_F(IntArray, MoreRecordsThanItNeedsAreAnError) {
  const std::string message = "TOO MANY DATA RECORDS IN A DATA BLOCK.";
  EXPECT_EQ(int_error(bytes_of(Block::integers(kOneToTen).cut(4)), 7), message);
  EXPECT_EQ(int_error(bytes_of(Block::integers(kOneToTen).cut(4)), 3), message);
  EXPECT_EQ(int_error(bytes_of(Block::integers(kOneToTen).cut(1)), 8), message);
  EXPECT_EQ(int_error(bytes_of(Rule{4, 3, 2}) + std::string(16, '\0'), 0), message);
}

TEST_F(IntArray, AnEndRuleInsteadOfElementsIsAnError) {
  EXPECT_EQ(int_error(bytes_of(Rule{0, 0, 0}), 3), "ERROR IN FLDV4_I_END");
  EXPECT_EQ(ints(bytes_of(Rule{0, 0, 0}), 0), std::vector<int>());
}

TEST_F(IntArray, ManyMoreRecordsThanItNeedsAreAnError) {
  const int many = std::numeric_limits<int>::max();
  EXPECT_EQ(int_error(bytes_of(Block::integers({1}).with_rule({4, many, many})), 1),
            "TOO MANY DATA RECORDS IN A DATA BLOCK.");
}

TEST_F(IntArray, ANegativeRecordSizeIsAnError) {
  EXPECT_EQ(int_error(bytes_of(Block::integers({1}).with_rule({4, -1, 1})), 1),
            "NEGATIVE RECORD SIZE IN A RULE RECORD.");
  EXPECT_EQ(int_error(bytes_of(Block::integers({1}).with_rule({4, std::numeric_limits<int>::min(), 1})), 1),
            "NEGATIVE RECORD SIZE IN A RULE RECORD.");
}

TEST_F(IntArray, EmptyRecordsWithoutEndRunIntoTheEndOfTheFile) {
  const std::string bytes = bytes_of(Rule{4, 0, std::numeric_limits<int>::max()}) + std::string(80, '\0');
  EXPECT_EQ(int_error(bytes, 1), "UNEXPECTED END OF FILE AT BYTE 100.");
}

TEST_F(IntArray, CutOffAnywhereIsAnUnexpectedEnd) {
  const std::string bytes = bytes_of(Block::integers({1, 2, 3}).cut(2));
  for (size_t length = 0; length < bytes.size(); ++length) {
    EXPECT_EQ(int_error(bytes.substr(0, length), 3),
              "UNEXPECTED END OF FILE AT BYTE " + std::to_string(length) + ".");
  }
}

TEST_F(Int64Array, OfFourBytesIsWidenedWithItsSign) {
  EXPECT_EQ(longs(bytes_of(Block::long_integers({-1, 5, -0x7fffffff - 1L, 0x7fffffff}, 4)), 4),
            (std::vector<long>{-1, 5, -0x7fffffff - 1L, 0x7fffffff}));
}

TEST_F(Int64Array, OfEightBytesIsReadAsItStands) {
  EXPECT_EQ(longs(bytes_of(Block::long_integers({-1, 0x0102030405060708})), 2),
            (std::vector<long>{-1, 0x0102030405060708}));
}

TEST_F(Int64Array, OfAnotherWidthIsReadAsEightBytes) {
  for (const int width : {0, 2, 16, -4}) {
    EXPECT_EQ(longs(bytes_of(Block::long_integer(0x100000001).with_rule({width, 1, 1})), 1),
              std::vector<long>{0x100000001});
  }
}

TEST_F(Int64Array, IsSpreadOverRecordsInBothWidths) {
  const testkit::Longs values = {1, -2, 3, -4, 5};
  const std::vector<long> expected = {1, -2, 3, -4, 5};
  EXPECT_EQ(longs(bytes_of(Block::long_integers(values, 4).cut(2)), 5), expected);
  EXPECT_EQ(longs(bytes_of(Block::long_integers(values, 8).cut(2)), 5), expected);
}

TEST_F(Int64Array, ElementsThatTheFileDoesNotGive) {
  EXPECT_EQ(longs(bytes_of(Rule{4, 1, 0}), 1), std::vector<long>{0});
  EXPECT_EQ(longs(bytes_of(Rule{8, 1, 0}), 1), std::vector<long>{-7});
}

TEST_F(Int64Array, MoreRecordsThanItNeedsAreAnErrorInBothWidths) {
  EXPECT_EQ(long_error(bytes_of(Block::long_integers({1, 2, 3}, 4).cut(1)), 1),
            "TOO MANY DATA RECORDS IN A DATA BLOCK.");
  EXPECT_EQ(long_error(bytes_of(Block::long_integers({1, 2, 3}, 8).cut(1)), 1),
            "TOO MANY DATA RECORDS IN A DATA BLOCK.");
}

TEST_F(Int64Array, AnEndRuleInsteadOfElementsIsAnError) {
  EXPECT_EQ(long_error(bytes_of(Rule{0, 0, 0}), 1), "ERROR IN FLDV4_I_END");
}

TEST_F(Int64Array, ANegativeCountIsAnError) {
  EXPECT_EQ(long_error(bytes_of(Block::long_integer(1, 4)), -1), "NEGATIVE COUNT -1 AT BYTE 20.");
}

TEST_F(Int64Array, CutOffAnywhereIsAnUnexpectedEndAndFreesItsScratchArray) {
  for (const int width : {4, 8}) {
    const std::string bytes = bytes_of(Block::long_integers({1, 2, 3}, width).cut(2));
    for (size_t length = 0; length < bytes.size(); ++length) {
      EXPECT_EQ(long_error(bytes.substr(0, length), 3),
                "UNEXPECTED END OF FILE AT BYTE " + std::to_string(length) + ".");
      EXPECT_EQ(fld::memory, nullptr);
    }
  }
}

TEST_F(NewIntArray, HoldsTheValues) {
  const Input input(bytes_of(Block::integers(kOneToTen).cut(3)) + kNext);
  const auto values = fld::read_int_array(input.stream(), 10, 1100440);
  EXPECT_EQ(values[0], 1);
  EXPECT_EQ(values[9], 10);
  EXPECT_EQ(input.rest(), kNext);
}

TEST_F(NewIntArray, IsListedUnderItsTag) {
  const Input input(bytes_of(Block::integers({1})));
  fld::read_int_array(input.stream(), 1, 1100440).release();
  EXPECT_EQ(leak_report(), "MEMORY LEAK DETECTED 1100440\n");
}

TEST_F(NewIntArray, OfNoElementsIsNull) {
  const Input input(bytes_of(Block::integers({})) + kNext);
  EXPECT_EQ(fld::read_int_array(input.stream(), 0, 1100440).get(), nullptr);
  EXPECT_EQ(input.rest(), kNext);
}

TEST_F(NewIntArray, ANegativeCountIsAnError) {
  EXPECT_EQ(new_array_error(bytes_of(Block::integers({1})), -1).substr(0, 17), "NEGATIVE COUNT -1");
}

TEST_F(NewIntArray, ACountBeyondTheFileIsAnError) {
  const std::string bytes = bytes_of(Block::integers({1}).with_rule({4, 0x7fffffff, 1}));
  EXPECT_EQ(new_array_error(bytes, 0x7fffffff).substr(0, 46),
            "COUNT 2147483647 EXCEEDS THE REST OF THE FILE ");
  EXPECT_EQ(new_array_error(bytes, std::numeric_limits<long>::max()).substr(0, 26),
            "COUNT 9223372036854775807 ");
}

TEST_F(NewIntArray, FewerElementsThanItNeedsAreAnError) {
  const std::string message = "TOO FEW DATA RECORDS IN A DATA BLOCK.";
  EXPECT_EQ(new_array_error(bytes_of(Block::integers({1, 2, 3, 4}).cut(2)), 5), message);
  EXPECT_EQ(new_array_error(bytes_of(Rule{4, 5, 0}), 5), message);
  EXPECT_EQ(new_array_error(bytes_of(Rule{4, 5, -1}), 5), message);
}

TEST_F(NewIntArray, AnEndRuleInsteadOfElementsIsAnError) {
  EXPECT_EQ(new_array_error(bytes_of(Rule{0, 0, 0}), 1), "ERROR IN FLDV4_I_END");
}

TEST_F(NewIntArray, ARuleThatIsNegativeTwiceAnnouncesNothing) {
  EXPECT_NE(new_array_error(bytes_of(Rule{4, -5, -1}), 5), "nothing was thrown");
  EXPECT_NE(new_array_error(bytes_of(Rule{4, -1, -5}), 5), "nothing was thrown");
}

TEST_F(NewIntArray, MoreRecordsThanItNeedsAreAnError) {
  EXPECT_EQ(new_array_error(bytes_of(Block::integers(kOneToTen).cut(5)), 4),
            "TOO MANY DATA RECORDS IN A DATA BLOCK.");
}

TEST_F(NewIntArray, CutOffAnywhereIsAnUnexpectedEnd) {
  const std::string bytes = bytes_of(Block::integers({1, 2, 3}).cut(2));
  for (size_t length = 0; length < bytes.size(); ++length) {
    EXPECT_EQ(new_array_error(bytes.substr(0, length), 3),
              "UNEXPECTED END OF FILE AT BYTE " + std::to_string(length) + ".");
  }
}

TEST_F(NewIntArray, OfAMillionElementsIsReadWhole) {
  std::vector<int> numbers(1000000);
  std::iota(numbers.begin(), numbers.end(), -500000);
  const Input input(bytes_of(Block::integers(numbers).cut(99999)));
  const auto values = fld::read_int_array(input.stream(), 1000000, 1100443);
  EXPECT_TRUE(std::equal(numbers.begin(), numbers.end(), values.get()));
}

TEST_F(SingleInt, IsABlockOfOne) {
  const Input input(bytes_of(Block::integer(-42)) + kNext);
  EXPECT_EQ(fld::read_int(input.stream()), -42);
  EXPECT_EQ(input.rest(), kNext);
}

TEST_F(SingleInt, WithoutRecordsIsTheDefault) {
  EXPECT_EQ(fld::read_int(Input(bytes_of(Rule{4, 1, 0})).stream()), 0);
  EXPECT_EQ(fld::read_int(Input(bytes_of(Rule{4, 1, 0})).stream(), 3), 3);
}

TEST_F(SingleInt, OfThreeRecordsIsAnError) {
  const Input input(bytes_of(Block::integers({1, 2, 3}).cut(1)));
  EXPECT_EQ(thrown_message([&] { fld::read_int(input.stream()); }), "TOO MANY DATA RECORDS IN A DATA BLOCK.");
}

}  // namespace
