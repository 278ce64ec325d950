// Known titles and those that are similar to one.
#include "inspect/titles.h"

#include "gtest/gtest.h"
#include <string>
#include <vector>

namespace {

using inspect::TitleInfo;

TEST(Titles, WhatMayBeFollowedByAnything) {
  std::vector<std::string> followed;
  for (const TitleInfo& title : inspect::all_titles()) {
    const std::string text(title.text);
    EXPECT_EQ(inspect::find_title(text), &title);
    EXPECT_EQ(inspect::find_title(text + " x"), &title);
    if (inspect::find_title(text + "x") == &title) followed.push_back(text);
  }
  EXPECT_EQ(followed, (std::vector<std::string>{"OverlapStart_", "LS_ALE", "LS_Scalar:", "LS_Vector:"}));
}

TEST(Titles, AreInTheHeaderOrInARegionSet) {
  std::vector<std::string> items;
  for (const TitleInfo& title : inspect::all_titles()) {
    if (title.group == inspect::TitleGroup::header_item) items.emplace_back(title.text);
  }
  EXPECT_EQ(items, (std::vector<std::string>{"Application", "ApplicationVersion", "ReleaseDate", "GridType",
                                             "Dimension", "Bias", "Date", "Comments", "Cycle", "Unused"}));
}

TEST(Titles, ASimilarOneIsFound) {
  const auto similar = [](const char* text) {
    const TitleInfo* const found = inspect::similar_title(text);
    return found == nullptr ? "" : std::string(found->text);
  };
  EXPECT_EQ(similar("ls_nodes"), "LS_Nodes");
  EXPECT_EQ(similar("LS_Node"), "LS_Nodes");
  EXPECT_EQ(similar("LS_Scolar:p"), "LS_Scalar:");
  EXPECT_EQ(similar("Biaz"), "");
  EXPECT_EQ(similar("bias"), "Bias");
}

}  // namespace
