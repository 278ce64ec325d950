// Title records and their comparison with keys.
#include <cstring>
#include <gtest/gtest.h>
#include <string>

#include "format/record.h"
#include "tests/format/input.h"
#include "tests/support/thrown_message.h"

namespace {

using fld::titlecmp;
using testkit::Title;

struct TitleRead {
  std::string text;
  int length = -1;
  std::string rest;
};

TitleRead read(const Title& title) {
  const Input input(bytes_of(title) + kNext);
  char buffer[34];
  memset(buffer, '#', sizeof buffer);
  TitleRead read;
  read.length = fld::FLDV4_I_TITLE(input.stream(), buffer);
  EXPECT_EQ(buffer[32], '\0');
  EXPECT_EQ(buffer[33], '#') << "written behind the title's terminator";
  read.text.assign(buffer, 32);
  read.rest = input.rest();
  return read;
}

Title with_markers(std::optional<int> leading, std::optional<int> trailing) {
  Title title("LS_Nodes");
  title.markers = {.leading = leading, .trailing = trailing};
  return title;
}

TEST(Title, KeepsItsBlanks) {
  const TitleRead title = read("LS_Nodes");
  EXPECT_EQ(title.text, "LS_Nodes                        ");
  EXPECT_EQ(title.length, 32);
  EXPECT_EQ(title.rest, kNext);
}

TEST(Title, MayFillItsRecord) {
  EXPECT_EQ(read("LS_Scalar:abcdefghijklmnopqrstuv").text, "LS_Scalar:abcdefghijklmnopqrstuv");
}

TEST(Title, TheTrailingMarkerIsItsLength) {
  const TitleRead title = read(with_markers({}, 8));
  EXPECT_EQ(title.length, 8);
  EXPECT_EQ(title.text, "LS_Nodes                        ");
}

TEST(Title, ALengthBeyondTheTitleIsBroughtBackToIt) {
  EXPECT_EQ(read(with_markers({}, 33)).length, 32);
  EXPECT_EQ(read(with_markers({}, 0x7fffffff)).length, 32);
  EXPECT_EQ(read(with_markers({}, -1)).length, 0);
  EXPECT_EQ(read(with_markers({}, -0x7fffffff - 1)).length, 0);
  EXPECT_EQ(read(with_markers({}, 0)).length, 0);
}

TEST(Title, TheLeadingMarkerIsNotLookedAt) {
  const TitleRead title = read(with_markers(-7, {}));
  EXPECT_EQ(title.length, 32);
  EXPECT_EQ(title.text, "LS_Nodes                        ");
  EXPECT_EQ(title.rest, kNext);
}

TEST(Title, CutOffAnywhereIsAnUnexpectedEnd) {
  const std::string bytes = bytes_of(Title("LS_Nodes"));
  char title[33];
  for (size_t length = 0; length < bytes.size(); ++length) {
    const Input input(bytes.substr(0, length));
    EXPECT_EQ(thrown_message([&] { fld::FLDV4_I_TITLE(input.stream(), title); }),
              "UNEXPECTED END OF FILE AT BYTE " + std::to_string(length) + ".");
  }
}

// The results of FLDV4_I_TITLE.
std::string title_of(const std::string& text) {
  return Title(text).payload();
}

TEST(TitleCompare, TheKeyFollowedByBlanksMatches) {
  EXPECT_EQ(titlecmp(title_of("Dimension").c_str(), "Dimension", 32), 0);
  EXPECT_EQ(titlecmp(title_of("LS_SurfaceGeometry").c_str(), "LS_SurfaceGeometry", 32), 0);
}

TEST(TitleCompare, TheKeyFollowedByALetterDoesNotMatch) {
  EXPECT_NE(titlecmp(title_of("Dimensions").c_str(), "Dimension", 32), 0);
  EXPECT_NE(titlecmp(title_of("ApplicationVersion").c_str(), "Application", 32), 0);
  EXPECT_NE(titlecmp(title_of("LS_SurfaceGeometryArray").c_str(), "LS_SurfaceGeometry", 32), 0);
}

TEST(TitleCompare, AShorterTitleDoesNotMatch) {
  EXPECT_NE(titlecmp(title_of("Application").c_str(), "ApplicationVersion", 32), 0);
  EXPECT_NE(titlecmp(title_of("").c_str(), "Date", 32), 0);
}

TEST(TitleCompare, LettersHaveTheirCase) {
  EXPECT_NE(titlecmp(title_of("dimension").c_str(), "Dimension", 32), 0);
}

TEST(TitleCompare, BlanksInFrontCount) {
  EXPECT_NE(titlecmp(title_of(" Dimension").c_str(), "Dimension", 32), 0);
}

TEST(TitleCompare, WhatFollowsTheBlanksDoesNotCount) {
  EXPECT_EQ(titlecmp(title_of("Dimension  of the mesh").c_str(), "Dimension", 32), 0);
  EXPECT_EQ(titlecmp(title_of("Dimension X").c_str(), "Dimension", 32), 0);
}

TEST(TitleCompare, AKeyWithBlanksInsideMatchesItself) {
  EXPECT_EQ(titlecmp(title_of("a b").c_str(), "a b", 32), 0);
  EXPECT_NE(titlecmp(title_of("a  b").c_str(), "a b", 32), 0);
}

TEST(TitleCompare, TheKeyMayFillTheTitle) {
  const std::string key = "LS_Scalar:abcdefghijklmnopqrstuv";
  ASSERT_EQ(key.size(), 32U);
  EXPECT_EQ(titlecmp(key.c_str(), key.c_str(), 32), 0);
  EXPECT_NE(titlecmp(key.c_str(), (key + "w").c_str(), 32), 0);
}

TEST(TitleCompare, OnlyTheFirstNCharactersCount) {
  const std::string title = title_of("Dimension");
  for (int n = 0; n < 9; ++n) EXPECT_NE(titlecmp(title.c_str(), "Dimension", n), 0) << n;
  for (int n = 9; n <= 32; ++n) EXPECT_EQ(titlecmp(title.c_str(), "Dimension", n), 0) << n;

  const std::string longer = title_of("DimensionOfTheMesh");
  for (int n = 0; n <= 32; ++n) EXPECT_EQ(titlecmp(longer.c_str(), "Dimension", n) == 0, n == 9) << n;
}

TEST(TitleCompare, EveryKeyOfEveryLengthMatchesFromItsOwnLengthOn) {
  const std::string letters = "abcdefghijklmnopqrstuvwxyzABCDEF";
  for (size_t k = 1; k <= 32; ++k) {
    const std::string key = letters.substr(0, k);
    const std::string title = title_of(key);
    for (int n = 0; n <= 32; ++n) {
      EXPECT_EQ(titlecmp(title.c_str(), key.c_str(), n) == 0, static_cast<size_t>(n) >= k) << key << " " << n;
    }
  }
}

TEST(TitleCompare, NoCharactersMatchOnlyTheEmptyKey) {
  EXPECT_EQ(titlecmp("Dimension", "", 0), 0);
  EXPECT_NE(titlecmp("Dimension", "D", 0), 0);
}

TEST(TitlePrefix, IsFoundAtTheBeginning) {
  EXPECT_TRUE(fld::title_starts_with(title_of("OverlapStart_1").c_str(), "OverlapStart_"));
  EXPECT_TRUE(fld::title_starts_with(title_of("OverlapStart_").c_str(), "OverlapStart_"));
  EXPECT_TRUE(fld::title_starts_with(title_of("LS_Scalar:p").c_str(), "LS_Scalar:"));
}

TEST(TitlePrefix, HasToBeThereInFull) {
  EXPECT_FALSE(fld::title_starts_with(title_of("OverlapStart").c_str(), "OverlapStart_"));
  EXPECT_FALSE(fld::title_starts_with(title_of("OverlapEnd").c_str(), "OverlapStart_"));
  EXPECT_FALSE(fld::title_starts_with(title_of("LS_Scalar").c_str(), "LS_Scalar:"));
  EXPECT_FALSE(fld::title_starts_with(title_of("ls_scalar:p").c_str(), "LS_Scalar:"));
}

}  // namespace
