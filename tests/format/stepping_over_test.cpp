// Skipping a block or the rest of a section.
#include <gtest/gtest.h>
#include <limits>
#include <string>

#include "format/record.h"
#include "testkit/big_endian.h"
#include "tests/format/input.h"
#include "tests/support/thrown_message.h"

namespace {

using testkit::Block;
using testkit::Rule;
using Step = void (*)(FILE*);

constexpr Step kSection = fld::FLDV4_I_SKIP;
constexpr Step kBlock = [](FILE* stream) { fld::FLDV4_I_SKIP_SUB(stream); };

std::string error_of(Step step, const std::string& bytes) {
  const Input input(bytes);
  return thrown_message([&] { step(input.stream()); });
}

std::string record_of(size_t length) {
  return written([&](testkit::RecordWriter& writer) { writer.record(std::string(length, 'x')); });
}

TEST(SteppingOverASection, TakesAllItsBlocksAndTheEndRule) {
  // Three rules with two, no and one record.
  const Input input(bytes_of(Rule{4, 5, 2}) + record_of(20) + record_of(8) + bytes_of(Rule{4, 5, 0}) +
                    bytes_of(Rule{8, 1, 1}) + record_of(8) + bytes_of(Rule{}) + kNext);
  kSection(input.stream());
  EXPECT_EQ(input.rest(), kNext);
}

TEST(SteppingOverASection, WithoutBlocksTakesTheEndRule) {
  const Input input(bytes_of(Rule{}) + bytes_of(Rule{}));
  kSection(input.stream());
  EXPECT_EQ(input.rest(), bytes_of(Rule{}));
}

TEST(SteppingOverASection, FollowsTheMarkersAndNotTheRule) {
  const Input input(bytes_of(Rule{4, 5, 1}) + record_of(123) + bytes_of(Rule{}) + kNext);
  kSection(input.stream());
  EXPECT_EQ(input.rest(), kNext);
}

TEST(SteppingOverASection, TrailingMarkersAreNotLookedAt) {
  Block block = Block::integers({1, 2, 3}).cut(2);
  block.markers.trailing = -5;
  const Input input(bytes_of(block) + bytes_of(Rule{}) + kNext);
  kSection(input.stream());
  EXPECT_EQ(input.rest(), kNext);
}

TEST(SteppingOverASection, ARuleWithoutRecordsIsABlock) {
  const Input input(bytes_of(Rule{4, 0, 0}) + bytes_of(Rule{0, 3, 0}) + bytes_of(Rule{0, 0, -1}) +
                    bytes_of(Rule{4, 1, -7}) + bytes_of(Rule{}) + kNext);
  kSection(input.stream());
  EXPECT_EQ(input.rest(), kNext);
}

TEST(SteppingOverASection, EmptyRecordsAreSteppedOver) {
  const Input input(bytes_of(Rule{1, 0, 3}) + record_of(0) + record_of(0) + record_of(0) + bytes_of(Rule{}) +
                    kNext);
  kSection(input.stream());
  EXPECT_EQ(input.rest(), kNext);
}

TEST(SteppingOverASection, WithoutAnEndRuleIsAnUnexpectedEnd) {
  const std::string bytes = bytes_of(Block::integer(1));
  EXPECT_EQ(error_of(kSection, bytes), "UNEXPECTED END OF FILE AT BYTE 32.");
}

TEST(SteppingOverABlock, TakesItsRecordsOnly) {
  const Input input(bytes_of(Block::integers({1, 2, 3, 4, 5}).cut(2)) + bytes_of(Rule{4, 1, 1}));
  kBlock(input.stream());
  EXPECT_EQ(input.rest(), bytes_of(Rule{4, 1, 1}));
}

TEST(SteppingOverABlock, WithoutRecordsTakesItsRule) {
  const Input input(bytes_of(Rule{4, 7, 0}) + bytes_of(Rule{4, 7, -2}) + bytes_of(Rule{}) + kNext);
  kBlock(input.stream());
  EXPECT_EQ(input.position(), 20);
  kBlock(input.stream());
  EXPECT_EQ(input.position(), 40);
  kBlock(input.stream());
  EXPECT_EQ(input.rest(), kNext);
}

// For a block and for a section, which have the same errors.
class SteppingOver : public testing::TestWithParam<Step> {};

INSTANTIATE_TEST_SUITE_P(Of, SteppingOver, testing::Values(kSection, kBlock),
                         [](const auto& info) { return info.index == 0 ? "ASection" : "ABlock"; });

TEST_P(SteppingOver, NeverGoesBack) {
  for (const int length : {-1, -24, std::numeric_limits<int>::min()}) {
    const std::string bytes = bytes_of(Rule{4, 1, 1}) + testkit::big_endian(length) + std::string(100, '\0');
    EXPECT_EQ(error_of(GetParam(), bytes),
              "NEGATIVE RECORD LENGTH " + std::to_string(length) + " AT BYTE 24.");
  }
}

TEST_P(SteppingOver, NeverGoesBeyondTheEndOfTheFile) {
  for (const int length : {101, 5000, std::numeric_limits<int>::max()}) {
    const std::string bytes = bytes_of(Rule{4, 1, 1}) + testkit::big_endian(length) + std::string(100, '\0');
    EXPECT_EQ(error_of(GetParam(), bytes).substr(0, 22), "UNEXPECTED END OF FILE");
  }
}

TEST_P(SteppingOver, NeedsTheTrailingMarker) {
  const std::string bytes = bytes_of(Rule{4, 1, 1}) + testkit::big_endian(4) + std::string(4, '\0');
  EXPECT_EQ(error_of(GetParam(), bytes), "UNEXPECTED END OF FILE AT BYTE 28.");
  EXPECT_EQ(error_of(GetParam(), bytes + "abc"), "UNEXPECTED END OF FILE AT BYTE 31.");
}

TEST_P(SteppingOver, RecordsThatAreNotThereAreAnUnexpectedEnd) {
  const std::string bytes = bytes_of(Rule{4, 1, std::numeric_limits<int>::max()}) + record_of(4);
  EXPECT_EQ(error_of(GetParam(), bytes), "UNEXPECTED END OF FILE AT BYTE 32.");
}

TEST(SteppingOverABlock, TellsWhetherItsRuleIsTheEndRule) {
  const Input input(bytes_of(Rule{4, 5, 1}) + record_of(20) + bytes_of(Rule{4, 0, 0}) + bytes_of(Rule{}));
  EXPECT_TRUE(fld::FLDV4_I_SKIP_SUB(input.stream()));
  EXPECT_TRUE(fld::FLDV4_I_SKIP_SUB(input.stream()));
  EXPECT_FALSE(fld::FLDV4_I_SKIP_SUB(input.stream()));
}

}  // namespace
