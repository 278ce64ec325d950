// Data blocks of floating-point values.
#include <cstdint>
#include <gtest/gtest.h>
#include <limits>
#include <string>
#include <vector>

#include "format/data_block.h"
#include "tests/format/input.h"
#include "tests/support/empty_list.h"
#include "tests/support/thrown_message.h"

namespace {

using fld::VFPA;
using testkit::Block;
using testkit::Precision;
using testkit::Rule;

using SingleFloat = EmptyList;
using FloatArray = EmptyList;

constexpr char kInvalidType[] = "THIS FLD FILE HAS AN INVALID DATA TYPE.";

double single(const std::string& bytes) {
  const Input input(bytes + kNext);
  const double value = fld::FLDV4_I_FPREC(input.stream());
  EXPECT_EQ(input.rest(), kNext);
  return value;
}

std::string single_error(const std::string& bytes) {
  const Input input(bytes);
  return thrown_message([&] { fld::FLDV4_I_FPREC(input.stream()); });
}

struct Array {
  int64_t precision = 0;
  std::vector<double> values;
};

Array array(const std::string& bytes, int n) {
  const Input input(bytes + kNext);
  VFPA vfpa;
  fld::FLDV4_I_FPRECaloc_array(input.stream(), n, &vfpa);
  EXPECT_EQ(input.rest(), kNext);
  Array result = {vfpa.precision, {}};
  for (int i = 0; i < n; ++i) result.values.push_back(fld::vfpa2double(vfpa, i));
  fld::cv_mfree(vfpa.data);
  return result;
}

std::string array_error(const std::string& bytes, int n) {
  const Input input(bytes);
  VFPA vfpa;
  std::string message = thrown_message([&] { fld::FLDV4_I_FPRECaloc_array(input.stream(), n, &vfpa); });
  fld::cv_mfree(vfpa.data);
  return message;
}

TEST_F(SingleFloat, OfFourBytesIsTheSameValueInDouble) {
  EXPECT_EQ(single(bytes_of(Block::real(0.1, Precision::kSingle))), 0.100000001490116119384765625);
  EXPECT_EQ(single(bytes_of(Block::real(-2.5, Precision::kSingle))), -2.5);
}

TEST_F(SingleFloat, OfEightBytesIsReadAsItStands) {
  EXPECT_EQ(single(bytes_of(Block::real(0.1, Precision::kDouble))), 0.1);
}

TEST_F(SingleFloat, OfAnotherWidthIsAnInvalidType) {
  for (const int width : {0, 2, 3, 16, -4}) {
    EXPECT_EQ(single_error(bytes_of(Block::real(1.0).with_rule({width, 1, 1}))), kInvalidType) << width;
  }
}

TEST_F(SingleFloat, IsOneRecordWhateverTheRuleSays) {
  EXPECT_EQ(single(bytes_of(Block::real(2.5).with_rule({4, 7, 0}))), 2.5);
  EXPECT_EQ(single(bytes_of(Block::real(2.5).with_rule({4, -1, 99}))), 2.5);
}

TEST_F(SingleFloat, CutOffAnywhereIsAnUnexpectedEnd) {
  const std::string bytes = bytes_of(Block::real(2.5, Precision::kDouble));
  for (size_t length = 0; length < bytes.size(); ++length) {
    EXPECT_EQ(single_error(bytes.substr(0, length)),
              "UNEXPECTED END OF FILE AT BYTE " + std::to_string(length) + ".");
  }
}

TEST_F(FloatArray, KeepsThePrecisionOfTheBlock) {
  const Array singles = array(bytes_of(Block::reals({0.1, -2.0, 3.5}, Precision::kSingle)), 3);
  EXPECT_EQ(singles.precision, 4);
  EXPECT_EQ(singles.values, (std::vector<double>{0.100000001490116119384765625, -2.0, 3.5}));
  const Array doubles = array(bytes_of(Block::reals({0.1, -2.0, 3.5}, Precision::kDouble)), 3);
  EXPECT_EQ(doubles.precision, 8);
  EXPECT_EQ(doubles.values, (std::vector<double>{0.1, -2.0, 3.5}));
}

TEST_F(FloatArray, IsSpreadOverRecords) {
  const testkit::Reals values = {1.0, 2.0, 3.0, 4.0, 5.0};
  const std::vector<double> expected = {1.0, 2.0, 3.0, 4.0, 5.0};
  for (const int per_record : {1, 2, 3, 4, 5}) {
    EXPECT_EQ(array(bytes_of(Block::reals(values, Precision::kSingle).cut(per_record)), 5).values, expected);
    EXPECT_EQ(array(bytes_of(Block::reals(values, Precision::kDouble).cut(per_record)), 5).values, expected);
  }
}

TEST_F(FloatArray, IsATrackedBlockOfItsOwn) {
  const Input input(bytes_of(Block::real(1.0)));
  VFPA vfpa;
  fld::FLDV4_I_FPRECaloc_array(input.stream(), 1, &vfpa);
  EXPECT_EQ(leak_report(), "MEMORY LEAK DETECTED 1100142\n");
}

TEST_F(FloatArray, OfNoElementsHasAPrecisionAndNoData) {
  const Input input(bytes_of(Block::reals({}, Precision::kDouble)) + kNext);
  VFPA vfpa;
  fld::FLDV4_I_FPRECaloc_array(input.stream(), 0, &vfpa);
  EXPECT_EQ(vfpa.precision, 8);
  EXPECT_EQ(vfpa.data, nullptr);
  EXPECT_EQ(input.rest(), kNext);
}

TEST_F(FloatArray, OfAnotherWidthIsAnInvalidType) {
  for (const int width : {0, 2, 3, 16, -8}) {
    EXPECT_EQ(array_error(bytes_of(Block::real(1.0).with_rule({width, 1, 1})), 1), kInvalidType) << width;
    EXPECT_EQ(fld::memory, nullptr);
  }
}

TEST_F(FloatArray, ANegativeCountIsAnError) {
  EXPECT_EQ(array_error(bytes_of(Block::real(1.0)), -1), "NEGATIVE COUNT -1 AT BYTE 20.");
}

TEST_F(FloatArray, ACountBeyondTheFileIsAnErrorBeforeAnythingIsAllocated) {
  const Input input(bytes_of(Block::real(1.0).with_rule({4, 0x7fffffff, 1})));
  VFPA vfpa;
  EXPECT_EQ(thrown_message([&] { fld::FLDV4_I_FPRECaloc_array(input.stream(), 0x7fffffff, &vfpa); }),
            "COUNT 2147483647 EXCEEDS THE REST OF THE FILE AT BYTE 20.");
  EXPECT_EQ(vfpa.data, nullptr);
  EXPECT_EQ(fld::memory, nullptr);
}

TEST_F(FloatArray, FewerElementsThanItNeedsAreAnError) {
  EXPECT_EQ(array_error(bytes_of(Block::reals({1.0, 2.0})), 3), "TOO FEW DATA RECORDS IN A DATA BLOCK.");
  EXPECT_EQ(array_error(bytes_of(Rule{8, 3, 0}), 3), "TOO FEW DATA RECORDS IN A DATA BLOCK.");
  EXPECT_EQ(array_error(bytes_of(Rule{8, 3, -1}), 3), "TOO FEW DATA RECORDS IN A DATA BLOCK.");
}

TEST_F(FloatArray, AnEndRuleInsteadOfElementsIsAnError) {
  EXPECT_EQ(array_error(bytes_of(Rule{0, 0, 0}), 3), "ERROR IN FLDV4_I_END");
}

TEST_F(FloatArray, ARecordWithoutElementsMayFollowTheLastElement) {
  const std::string block = bytes_of(Block::reals({1.0, 2.0}).cut(1).with_rule({4, 1, 3}));
  EXPECT_EQ(array_error(block + std::string(8, '\0'), 2), "nothing was thrown");
}

TEST_F(FloatArray, ARuleThatIsNegativeTwiceAnnouncesNothing) {
  EXPECT_NE(array_error(bytes_of(Rule{8, -3, -1}), 3), "nothing was thrown");
}

TEST_F(FloatArray, MoreRecordsThanItNeedsAreAnError) {
  EXPECT_EQ(array_error(bytes_of(Block::reals({1.0, 2.0, 3.0}).cut(1)), 1),
            "TOO MANY DATA RECORDS IN A DATA BLOCK.");
}

TEST_F(FloatArray, ANegativeRecordSizeIsAnError) {
  EXPECT_NE(array_error(bytes_of(Block::real(1.0).with_rule({4, -1, 1})), 1), "nothing was thrown");
}

TEST_F(FloatArray, CutOffAnywhereIsAnUnexpectedEnd) {
  const std::string bytes = bytes_of(Block::reals({1.0, 2.0, 3.0}).cut(2));
  for (size_t length = 0; length < bytes.size(); ++length) {
    EXPECT_EQ(array_error(bytes.substr(0, length), 3),
              "UNEXPECTED END OF FILE AT BYTE " + std::to_string(length) + ".");
  }
}

TEST_F(FloatArray, BelongsToItsOwnerBeforeItsValuesAreRead) {
  const std::string bytes = bytes_of(Block::reals({1.0, 2.0, 3.0}, Precision::kDouble).cut(2));
  const Input input(bytes.substr(0, bytes.size() - 1));
  VFPA vfpa;
  EXPECT_THROW(fld::FLDV4_I_FPRECaloc_array(input.stream(), 3, &vfpa), fld::FLDReadException);
  ASSERT_NE(vfpa.data, nullptr);
  EXPECT_EQ(vfpa.precision, 8);
  EXPECT_EQ(fld::vfpa2double(vfpa, 1), 2.0);
  fld::cv_mfree(vfpa.data);
}

}  // namespace
