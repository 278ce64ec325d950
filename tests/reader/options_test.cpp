// The two option toggles.
#include <array>

#include "tests/reader/loaded_reader.h"

namespace reader_test {
namespace {

using Options = LoadedReader;

TEST_F(Options, TwoTogglesAreOfferedWithoutPulldownsAndFieldsAndTheResultIs0) {
  int toggles = kUntouchedInt;
  int pulldowns = kUntouchedInt;
  int fields = kUntouchedInt;
  EXPECT_EQ(0, api().get_extra_gui_numbers(&toggles, &pulldowns, &fields));
  EXPECT_EQ(2, toggles);
  EXPECT_EQ(0, pulldowns);
  EXPECT_EQ(0, fields);
}

// Titles are strncpy'd with a limit of 40 characters.
TEST_F(Options, DefaultsAreSimplifyingOffAndGroupingOn) {
  constexpr std::size_t kTitle = 40;
  std::array<std::array<char, 80>, 3> titles;
  for (auto& title : titles) title.fill(kUntouchedChar);
  std::array<char*, 3> title_rows = {titles[0].data(), titles[1].data(), titles[2].data()};
  std::array<int, 3> defaults = {kUntouchedInt, kUntouchedInt, kUntouchedInt};
  EXPECT_EQ(1, api().get_extra_gui_defaults(title_rows.data(), defaults.data(), nullptr, nullptr, nullptr,
                                            nullptr, nullptr, nullptr));

  const auto expect = [&](std::size_t i, std::string text) {
    text.resize(kTitle, '\0');
    text.resize(titles[i].size(), kUntouchedChar);
    EXPECT_EQ(text, std::string(titles[i].data(), titles[i].size()));
  };
  expect(0, "Simplify reading sequential FLD files");
  expect(1, "Make group of parts");
  EXPECT_EQ(std::string(80, kUntouchedChar), std::string(titles[2].data(), titles[2].size()));
  EXPECT_EQ(0, defaults[0]);
  EXPECT_EQ(1, defaults[1]);
  EXPECT_EQ(kUntouchedInt, defaults[2]);
}

TEST_F(Options, PulldownAndFieldArgumentsAreNotTouched) {
  std::array<char, 80> title{};
  std::array<char*, 2> titles = {title.data(), title.data()};
  std::array<int, 2> defaults{};
  int pulldown_count = kUntouchedInt;
  int pulldown_default = kUntouchedInt;
  std::array<char, 80> text;
  text.fill(kUntouchedChar);
  char* text_row = text.data();
  char** items = &text_row;
  api().get_extra_gui_defaults(titles.data(), defaults.data(), &text_row, &pulldown_count, &pulldown_default,
                               &items, &text_row, &text_row);
  EXPECT_EQ(kUntouchedInt, pulldown_count);
  EXPECT_EQ(kUntouchedInt, pulldown_default);
  EXPECT_EQ(text.data(), text_row);
  EXPECT_EQ(&text_row, items);
  EXPECT_EQ(std::string(80, kUntouchedChar), std::string(text.data(), text.size()));
}

// The grouping option switches the part groups on.
TEST_F(Options, BothTogglesAreOffBeforeTheHostSetsThemAlthoughTheDefaultForGroupingIsOn) {
  int size = kUntouchedInt;
  EXPECT_EQ("", stderr_of([&] { EXPECT_EQ(1, api().get_metadata(&size, nullptr)); }));
  EXPECT_EQ(0, size);
}

TEST_F(Options, WhatTheHostSetsHoldsUntilItSetsSomethingElse) {
  std::array<int, 2> toggles = {0, 1};
  api().set_extra_gui_data(toggles.data(), nullptr, nullptr);
  EXPECT_NE("", host.metadata());
  toggles = {0, 0};
  api().set_extra_gui_data(toggles.data(), nullptr, nullptr);
  int size = kUntouchedInt;
  api().get_metadata(&size, nullptr);
  EXPECT_EQ(0, size);
}

TEST_F(Options, AnyNumberOtherThan0IsOn) {
  std::array<int, 2> toggles = {0, -7};
  api().set_extra_gui_data(toggles.data(), nullptr, nullptr);
  EXPECT_NE("", host.metadata());
}

}  // namespace
}  // namespace reader_test
