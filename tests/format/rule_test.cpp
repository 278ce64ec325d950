// Rule records and the end rule.
#include <gtest/gtest.h>
#include <string>

#include "format/record.h"
#include "tests/format/input.h"
#include "tests/support/thrown_message.h"
#include "tests/testkit/hex.h"

namespace {

std::string end_error(const testkit::Rule& rule) {
  const Input input(bytes_of(rule));
  return thrown_message([&] { fld::FLDV4_I_END(input.stream()); });
}

TEST(RuleRecord, GivesItsThreeFields) {
  const Input input(bytes_of(testkit::Rule{8, 1000, -3}) + kNext);
  const fld::Rule rule = fld::FLDV4_I_RULE(input.stream());
  EXPECT_EQ(rule.width, 8);
  EXPECT_EQ(rule.perRecord, 1000);
  EXPECT_EQ(rule.nRecords, -3);
  EXPECT_EQ(input.rest(), kNext);
}

TEST(RuleRecord, MarkersAreNotLookedAt) {
  const Input input(hex("7fffffff 00000004 00000002 00000001 80000000") + kNext);
  const fld::Rule rule = fld::FLDV4_I_RULE(input.stream());
  EXPECT_EQ(rule.width, 4);
  EXPECT_EQ(rule.perRecord, 2);
  EXPECT_EQ(rule.nRecords, 1);
  EXPECT_EQ(input.rest(), kNext);
}

TEST(RuleRecord, CutOffAnywhereIsAnUnexpectedEnd) {
  const std::string bytes = bytes_of(testkit::Rule{4, 1, 1});
  for (size_t length = 0; length < bytes.size(); ++length) {
    const Input input(bytes.substr(0, length));
    EXPECT_EQ(thrown_message([&] { fld::FLDV4_I_RULE(input.stream()); }),
              "UNEXPECTED END OF FILE AT BYTE " + std::to_string(length) + ".");
  }
}

TEST(RuleRecord, IsTheEndRuleWhenAllFieldsAreZero) {
  EXPECT_TRUE((fld::Rule{0, 0, 0}).is_end());
  EXPECT_FALSE((fld::Rule{4, 0, 0}).is_end());
  EXPECT_FALSE((fld::Rule{0, 5, 0}).is_end());
  EXPECT_FALSE((fld::Rule{0, 0, -1}).is_end());
}

TEST(EndRule, OfZeroesIsReadAndNothingElse) {
  const Input input(bytes_of(testkit::Rule{0, 0, 0}) + kNext);
  fld::FLDV4_I_END(input.stream());
  EXPECT_EQ(input.rest(), kNext);
}

TEST(EndRule, WithAnyOtherFieldFails) {
  EXPECT_EQ(end_error({0, 5, 0}), "ERROR IN FLDV4_I_END");
  EXPECT_EQ(end_error({4, 0, 0}), "ERROR IN FLDV4_I_END");
  EXPECT_EQ(end_error({0, 0, 1}), "ERROR IN FLDV4_I_END");
  EXPECT_EQ(end_error({0, 0, -1}), "ERROR IN FLDV4_I_END");
  EXPECT_EQ(end_error({4, 1, 1}), "ERROR IN FLDV4_I_END");
  EXPECT_EQ(end_error({0, 0, 0}), "nothing was thrown");
}

TEST(EndRule, ThatIsMissingIsAnUnexpectedEnd) {
  const Input input("");
  EXPECT_EQ(thrown_message([&] { fld::FLDV4_I_END(input.stream()); }), "UNEXPECTED END OF FILE AT BYTE 0.");
}

TEST(Marker, IsASignedNumber) {
  const Input input(hex("00000100 ffffffff"));
  EXPECT_EQ(fld::read_marker(input.stream()), 256);
  EXPECT_EQ(fld::read_marker(input.stream()), -1);
}

}  // namespace
