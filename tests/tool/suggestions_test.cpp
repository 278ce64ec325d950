// Suggestions for names that are unknown.
#include "tool/suggestions.h"

#include "gtest/gtest.h"
#include <string>
#include <vector>

namespace {

using Names = std::vector<std::string>;
using tool::nearest_names;

TEST(Suggestions, AThirdOfTheLettersMayBeWrong) {
  EXPECT_EQ(nearest_names("presure", {"pressure"}), Names{"pressure"});
  EXPECT_EQ(nearest_names("prexxure", {"pressure"}), Names{"pressure"});
  EXPECT_EQ(nearest_names("prexxxre", {"pressure"}), Names{});
  EXPECT_EQ(nearest_names("abc", {"abx", "axx"}), Names{"abx"});
  EXPECT_EQ(nearest_names("abcde", {"abcdx", "abcxx"}), Names{"abcdx"});
  EXPECT_EQ(nearest_names("abcdef", {"abcdxx", "abcxxx"}), Names{"abcdxx"});
}

TEST(Suggestions, ALetterMoreOrLessOrTwoExchangedAreOneSlip) {
  EXPECT_EQ(nearest_names("wll", {"wall"}), Names{"wall"});
  EXPECT_EQ(nearest_names("waall", {"wall"}), Names{"wall"});
  EXPECT_EQ(nearest_names("wlal", {"wall"}), Names{"wall"});
  EXPECT_EQ(nearest_names("awll", {"wall"}), Names{"wall"});
  EXPECT_EQ(nearest_names("lalw", {"wall"}), Names{});
}

TEST(Suggestions, UpperAndLowerCaseAreTheSame) {
  EXPECT_EQ(nearest_names("WALL", {"inlet", "Wall"}), Names{"Wall"});
}

TEST(Suggestions, ABeginningIsNear) {
  EXPECT_EQ(nearest_names("te", {"temperature", "pressure"}), Names{"temperature"});
  EXPECT_EQ(nearest_names("temp", {"temperature", "temq", "Temp"}), (Names{"Temp", "temperature", "temq"}));
}

TEST(Suggestions, OfASingleLetterOnlyItself) {
  EXPECT_EQ(nearest_names("p", {"pressure", "q", "P"}), Names{"P"});
  EXPECT_EQ(nearest_names("", {"p"}), Names{});
}

TEST(Suggestions, AreTheNearestThreeEachOnce) {
  EXPECT_EQ(nearest_names("abcdef", {"abcdxx", "abcdex", "abcdef", "abcdex", "abcdxy"}),
            (Names{"abcdef", "abcdex", "abcdxx"}));
}

TEST(Suggestions, OfAVeryLongTextAreNone) {
  const std::string longest(200, 'x');
  EXPECT_EQ(nearest_names(longest, {longest}), Names{longest});
  EXPECT_EQ(nearest_names(longest, {longest + "y"}), Names{longest + "y"});
  EXPECT_EQ(nearest_names(longest + "x", {longest + "x"}), Names{});
}

TEST(Suggestions, AsAQuestion) {
  EXPECT_EQ(tool::suggestion("; ", "x", {"wall"}), "");
  EXPECT_EQ(tool::suggestion("; ", "wal", {"wall"}), "; did you mean 'wall'?");
  EXPECT_EQ(tool::suggestion("", "wal", {"wall", "walk"}), "did you mean 'wall' or 'walk'?");
  EXPECT_EQ(tool::suggestion("", "wal", {"wall", "walk", "wax"}), "did you mean 'wall', 'walk' or 'wax'?");
}

}  // namespace
