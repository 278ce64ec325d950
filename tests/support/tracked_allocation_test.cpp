// The tracked allocator with one list of blocks.
#include "support/tracked_allocation.h"

#include <algorithm>
#include <cstring>
#include <gtest/gtest.h>
#include <numeric>
#include <random>
#include <string>
#include <vector>

#include "support/errors.h"
#include "tests/support/empty_list.h"
#include "tests/support/thrown_message.h"

namespace {

using fld::cv_caloc;
using fld::cv_maloc;
using fld::cv_mfree;
using fld::cv_realoc;

using CvCaloc = EmptyList;
using CvMaloc = EmptyList;
using CvRealoc = EmptyList;
using CvMfree = EmptyList;
using CvMfreeDeathTest = EmptyList;
using FreeMemory = EmptyList;
using ManyBlocks = EmptyList;

TEST_F(CvCaloc, GivesZeroedBytes) {
  auto* bytes = static_cast<char*>(cv_caloc(3, 4, 1));
  EXPECT_EQ(std::string(bytes, 12), std::string(12, '\0'));
  cv_mfree(bytes);
}

TEST_F(CvCaloc, NoCountOrNoSizeGivesNullAndListsNothing) {
  EXPECT_EQ(cv_caloc(0, 4, 1100440), nullptr);
  EXPECT_EQ(cv_caloc(4, 0, 1100440), nullptr);
  EXPECT_EQ(cv_caloc(0, 0, 1100440), nullptr);
  EXPECT_EQ(fld::memory, nullptr);
}

TEST_F(CvMaloc, GivesBytesToWrite) {
  void* block = cv_maloc(100, 1);
  memset(block, 1, 100);
  cv_mfree(block);
  EXPECT_EQ(fld::memory, nullptr);
}

TEST_F(CvMaloc, NoSizeGivesNullAndListsNothing) {
  EXPECT_EQ(cv_maloc(0, 1100440), nullptr);
  EXPECT_EQ(fld::memory, nullptr);
}

TEST_F(CvRealoc, OfNullGivesNullAndAllocatesNothing) {
  EXPECT_EQ(cv_realoc(nullptr, 100), nullptr);
  EXPECT_EQ(fld::memory, nullptr);
}

TEST_F(CvRealoc, KeepsTheContents) {
  auto* text = static_cast<char*>(cv_maloc(8, 1));
  memcpy(text, "abcdefg", 8);
  text = static_cast<char*>(cv_realoc(text, 1000000));
  EXPECT_STREQ(text, "abcdefg");
  memset(text, 'x', 1000000);
  text = static_cast<char*>(cv_realoc(text, 4));
  EXPECT_EQ(std::string(text, 4), "xxxx");
  cv_mfree(text);
}

TEST_F(CvRealoc, KeepsPlaceAndTag) {
  cv_maloc(8, 1000001);
  void* middle = cv_maloc(8, 1000002);
  cv_maloc(8, 1000003);
  EXPECT_NE(cv_realoc(middle, 1000000), nullptr);
  EXPECT_EQ(leak_report(),
            "MEMORY LEAK DETECTED 1000003\n"
            "MEMORY LEAK DETECTED 1000002\n"
            "MEMORY LEAK DETECTED 1000001\n");
}

TEST_F(CvRealoc, OfAnUnknownBlockThrows) {
  int local = 0;
  EXPECT_EQ(thrown_message<fld::MemoryAllocException>([&] { cv_realoc(&local, 8); }),
            "ATTEMPT TO REALLOC UNKNOWN POINTER");
  void* block = cv_maloc(8, 1);
  cv_mfree(block);
  EXPECT_EQ(thrown_message<fld::MemoryAllocException>([&] { cv_realoc(block, 8); }),
            "ATTEMPT TO REALLOC UNKNOWN POINTER");
}

TEST_F(CvRealoc, TheBlockIsKnownByItsNewAddressAlone) {
  void* before = cv_maloc(16, 1);
  void* after = cv_realoc(before, 10000000);
  ASSERT_NE(after, before) << "a block that grows this much does not stay in place";
  EXPECT_THROW(cv_realoc(before, 8), fld::MemoryAllocException);
  cv_mfree(after);
}

TEST_F(CvMfree, OfNullDoesNothing) {
  void* block = cv_maloc(8, 1100440);
  cv_mfree(nullptr);
  EXPECT_EQ(leak_report(), "MEMORY LEAK DETECTED 1100440\n");
  EXPECT_NE(block, nullptr);
}

TEST_F(CvMfree, TakesTheNewestTheOldestAndAnyBlockInBetween) {
  void* blocks[5];
  for (int i = 0; i < 5; ++i) blocks[i] = cv_maloc(8, i);
  cv_mfree(blocks[4]);
  cv_mfree(blocks[0]);
  cv_mfree(blocks[2]);
  EXPECT_EQ(leak_report(), "MEMORY LEAK DETECTED 3\nMEMORY LEAK DETECTED 1\n");
}

TEST_F(CvMfreeDeathTest, TheSameBlockTwiceEndsTheProcess) {
  void* block = cv_maloc(8, 1);
  cv_mfree(block);
  EXPECT_DEATH(cv_mfree(block), kUnknownBlock);
}

TEST_F(CvMfreeDeathTest, TheSameBlockTwiceEndsTheProcessAmongOthers) {
  void* other = cv_maloc(8, 1);
  void* block = cv_maloc(8, 2);
  void* third = cv_maloc(8, 3);
  cv_mfree(block);
  EXPECT_DEATH(cv_mfree(block), kUnknownBlock);
  cv_mfree(third);
  cv_mfree(other);
}

TEST_F(CvMfreeDeathTest, ABlockThatWasNeverAllocatedEndsTheProcess) {
  int local = 0;
  EXPECT_DEATH(cv_mfree(&local), kUnknownBlock);
}

TEST_F(CvMfreeDeathTest, APointerIntoABlockEndsTheProcess) {
  auto* block = static_cast<char*>(cv_maloc(64, 1));
  EXPECT_DEATH(cv_mfree(block + 16), kUnknownBlock);
  EXPECT_DEATH(cv_mfree(block + 1), kUnknownBlock);
  cv_mfree(block);
}

TEST_F(CvMfreeDeathTest, ABlockThatTheLeakReportFreedEndsTheProcess) {
  void* block = cv_maloc(8, 1);
  EXPECT_EQ(leak_report(), "MEMORY LEAK DETECTED 1\n");
  EXPECT_DEATH(cv_mfree(block), kUnknownBlock);
}

TEST_F(FreeMemory, ReportsTheNewestBlockFirst) {
  cv_caloc(2, 4, 1100440);
  cv_caloc(2, 4, 1100443);
  EXPECT_EQ(leak_report(), "MEMORY LEAK DETECTED 1100443\nMEMORY LEAK DETECTED 1100440\n");
}

TEST_F(FreeMemory, ASecondTimePrintsNothing) {
  cv_caloc(2, 4, 1100440);
  EXPECT_EQ(leak_report(), "MEMORY LEAK DETECTED 1100440\n");
  EXPECT_EQ(leak_report(), "");
}

TEST_F(FreeMemory, OfNothingPrintsNothing) {
  EXPECT_EQ(leak_report(), "");
  cv_mfree(cv_maloc(8, 1));
  EXPECT_EQ(leak_report(), "");
}

TEST_F(FreeMemory, BlocksAllocatedAfterwardsAreListedAgain) {
  cv_maloc(8, 1);
  EXPECT_EQ(leak_report(), "MEMORY LEAK DETECTED 1\n");
  cv_maloc(8, 2);
  EXPECT_EQ(leak_report(), "MEMORY LEAK DETECTED 2\n");
}

TEST_F(FreeMemory, TagsArePrintedAsSignedNumbers) {
  cv_maloc(8, -5);
  cv_maloc(8, 0);
  EXPECT_EQ(leak_report(), "MEMORY LEAK DETECTED 0\nMEMORY LEAK DETECTED -5\n");
}

// As many as a dataset of 100,000 regions has.
constexpr size_t kMany = 400000;

std::vector<void*> many_blocks() {
  std::vector<void*> blocks(kMany);
  for (size_t i = 0; i < kMany; ++i) blocks[i] = cv_caloc(1, 8, static_cast<int>(i));
  return blocks;
}

TEST_F(ManyBlocks, AreFreedOldestFirst) {
  for (void* block : many_blocks()) cv_mfree(block);
  EXPECT_EQ(fld::memory, nullptr);
}

TEST_F(ManyBlocks, AreFreedNewestFirst) {
  auto blocks = many_blocks();
  std::reverse(blocks.begin(), blocks.end());
  for (void* block : blocks) cv_mfree(block);
  EXPECT_EQ(fld::memory, nullptr);
}

TEST_F(ManyBlocks, AreFreedInAnyOrder) {
  auto blocks = many_blocks();
  std::shuffle(blocks.begin(), blocks.end(), std::mt19937(1));
  for (void* block : blocks) cv_mfree(block);
  EXPECT_EQ(fld::memory, nullptr);
}

TEST_F(ManyBlocks, AreResizedInAnyOrder) {
  auto blocks = many_blocks();
  std::shuffle(blocks.begin(), blocks.end(), std::mt19937(1));
  for (void*& block : blocks) block = cv_realoc(block, 40);
  for (void* block : blocks) cv_mfree(block);
  EXPECT_EQ(fld::memory, nullptr);
}

TEST_F(ManyBlocks, KeepTheOrderOfTheLeakReport) {
  auto blocks = many_blocks();
  for (size_t i = 0; i < kMany; ++i) {
    if (i % 100000 != 1) cv_mfree(blocks[i]);
  }
  EXPECT_EQ(leak_report(),
            "MEMORY LEAK DETECTED 300001\n"
            "MEMORY LEAK DETECTED 200001\n"
            "MEMORY LEAK DETECTED 100001\n"
            "MEMORY LEAK DETECTED 1\n");
}

}  // namespace
