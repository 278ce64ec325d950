// Large arrays, which several threads read.
#include "format/large_read.h"

#include <cstdint>
#include <cstdlib>
#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "format/data_block.h"
#include "support/worker_threads.h"
#include "tests/format/input.h"
#include "tests/support/empty_list.h"
#include "tests/support/thrown_message.h"

namespace {

using testkit::Block;

// Before the first large array of the process.
const int three_threads = setenv("FLD_THREADS", "3", 1);

using LargeArray = EmptyList;

constexpr int kValues = 1'500'001;  // more than two huge pages

std::vector<int32_t> numbers() {
  std::vector<int32_t> values(kValues);
  for (int i = 0; i < kValues; ++i) values[static_cast<size_t>(i)] = 3 * i - 7;
  return values;
}

// The block of these numbers in records of `per_record` elements; 0: one record.
std::string block_of_ints(int per_record) {
  const Block block = Block::integers(numbers());
  return bytes_of(per_record > 0 ? block.cut(per_record) : block);
}

// Reads the block and compares each value.
void expect_numbers(const std::string& bytes) {
  const Input input(bytes + kNext);
  std::vector<int> values(kValues + 1, -1);
  fld::FLDV4_I_INTarray(input.stream(), kValues, values.data());
  EXPECT_EQ(input.rest(), kNext);
  int wrong = 0;
  for (int i = 0; i < kValues; ++i) wrong += values[static_cast<size_t>(i)] != 3 * i - 7;
  EXPECT_EQ(wrong, 0);
  EXPECT_EQ(values.back(), -1) << "written behind the array";
}

std::string int_error(const std::string& bytes) {
  const Input input(bytes);
  return thrown_message([&] { fld::read_int_array(input.stream(), kValues, 1100440); });
}

TEST_F(LargeArray, IsReadByThreads) {
  ASSERT_EQ(fld::threads_for(4 * kValues), 3);
  constexpr int64_t kRuleAndMarker = 24;
  const Input input(block_of_ints(0));
  std::vector<int> values(kValues);
  EXPECT_TRUE(
      fld::read_by_threads(input.stream(), {kRuleAndMarker, 4, kValues, 0, kValues}, 3, values.data()));
  EXPECT_EQ(input.position(), kRuleAndMarker + 4 * kValues);
  EXPECT_EQ(values[1'000'000], 2'999'993);
}

TEST_F(LargeArray, IsReadFromOneRecordAndFromMany) {
  for (const int per_record : {0, 1'000'000, 70'000, 1000, 7, 1}) {
    SCOPED_TRACE(per_record);
    expect_numbers(block_of_ints(per_record));
  }
}

TEST_F(LargeArray, OfDoublesIsRead) {
  constexpr int kDoubles = 700'003;
  std::vector<double> written(kDoubles);
  for (int i = 0; i < kDoubles; ++i) written[static_cast<size_t>(i)] = 0.5 * i;
  const Input input(bytes_of(Block::reals(written, testkit::Precision::kDouble).cut(999)) + kNext);
  fld::VFPA values;
  fld::FLDV4_I_FPRECaloc_array(input.stream(), kDoubles, &values);
  EXPECT_EQ(input.rest(), kNext);
  int wrong = 0;
  for (int i = 0; i < kDoubles; ++i) wrong += fld::vfpa2double(values, i) != 0.5 * i;
  EXPECT_EQ(wrong, 0);
  fld::cv_mfree(values.data);
}

// What one thread says, whatever breaks off the file.
TEST_F(LargeArray, ThatIsCutOffIsReportedAtTheEndOfTheFile) {
  const std::string whole = block_of_ints(1000);
  constexpr size_t kMarkers = 1501 * 8;
  ASSERT_EQ(whole.size(), 20 + 4 * kValues + kMarkers);
  EXPECT_EQ(int_error(whole.substr(0, whole.size() - 1)), "UNEXPECTED END OF FILE AT BYTE 6012031.");
  EXPECT_EQ(int_error(whole.substr(0, whole.size() - 4)), "UNEXPECTED END OF FILE AT BYTE 6012028.");
  EXPECT_EQ(int_error(whole.substr(0, whole.size() - 9)), "UNEXPECTED END OF FILE AT BYTE 6012023.");
  EXPECT_EQ(fld::memory, nullptr) << "the array was kept";
}

TEST_F(LargeArray, WithAnEmptyRecordAfterItsElementsIsRead) {
  std::string bytes = block_of_ints(0);
  // The rule announces two records of all elements; the second one is empty.
  bytes.replace(12, 4, std::string("\0\0\0\2", 4));
  expect_numbers(bytes + std::string(8, '\0'));
}

TEST_F(LargeArray, WithTooManyRecordsIsAnError) {
  std::string bytes = block_of_ints(0);
  bytes.replace(12, 4, std::string("\0\0\0\3", 4));
  EXPECT_EQ(int_error(bytes + std::string(100, '\0')), "TOO MANY DATA RECORDS IN A DATA BLOCK.");
}

}  // namespace
