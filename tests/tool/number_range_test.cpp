// Numbers and their ranges as they are written on the command line.
#include "tool/number_range.h"

#include "gtest/gtest.h"
#include <CLI/CLI.hpp>
#include <array>
#include <optional>
#include <string>

namespace {

// From, to and stride among the numbers 1 to 10; nothing for a text that is no such range.
using Parsed = std::optional<std::array<int, 3>>;
Parsed parsed(const std::string& text) {
  const auto range = tool::parse_range(text, 1, 10);
  if (!range) return std::nullopt;
  return std::array<int, 3>{range->from, range->to, range->stride};
}

TEST(NumberRange, EveryForm) {
  EXPECT_EQ(parsed("4"), (Parsed{{4, 4, 1}}));
  EXPECT_EQ(parsed("last"), (Parsed{{10, 10, 1}}));
  EXPECT_EQ(parsed("2-5"), (Parsed{{2, 5, 1}}));
  EXPECT_EQ(parsed("6-"), (Parsed{{6, 10, 1}}));
  EXPECT_EQ(parsed("1-10:3"), (Parsed{{1, 10, 3}}));
  EXPECT_EQ(parsed("2-:4"), (Parsed{{2, 10, 4}}));
  EXPECT_EQ(parsed("3-last"), (Parsed{{3, 10, 1}}));
  EXPECT_EQ(parsed("last-"), (Parsed{{10, 10, 1}}));
  EXPECT_EQ(parsed("5-5"), (Parsed{{5, 5, 1}}));
}

TEST(NumberRange, WithinTheNumbersThatThereAre) {
  EXPECT_EQ(parsed("1-10"), (Parsed{{1, 10, 1}}));
  EXPECT_EQ(parsed("0"), std::nullopt);
  EXPECT_EQ(parsed("0-5"), std::nullopt);
  EXPECT_EQ(parsed("11"), std::nullopt);
  EXPECT_EQ(parsed("5-11"), std::nullopt);
  EXPECT_EQ(parsed("5-4"), std::nullopt);
}

TEST(NumberRange, OtherTextsAreNone) {
  for (const char* text : {"", "-", "-3", "x", "3x", "2-x", "2--3", "4:2", "2-5:0", "2-5:", "2-5:x", "2-5:-1",
                           ":2", "99999999999", "+3", " 3", "last3"}) {
    EXPECT_FALSE(tool::is_range(text)) << text;
    EXPECT_EQ(parsed(text), std::nullopt) << text;
  }
  for (const char* text : {"0", "5-4", "123456", "last", "7-:2"}) EXPECT_TRUE(tool::is_range(text)) << text;
}

TEST(NumberRange, AWholeNumberOfAnOption) {
  const auto check = tool::whole_number(2, 30);
  const auto complaint = [&](std::string text) { return check(text); };
  EXPECT_EQ(complaint("2"), "");
  EXPECT_EQ(complaint("30"), "");
  for (const std::string text : {"1", "31", "", "x", "3x", "-3", "2.5"})
    EXPECT_EQ(complaint(text), "'" + text + "' is not a number from 2 to 30");
}

}  // namespace
