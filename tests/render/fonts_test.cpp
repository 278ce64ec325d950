#include "render/fonts.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <set>
#include <string>

namespace {

using Characters = std::set<char32_t>;

constexpr char kPrivate[] = "\xf4\x8f\xbf\xbd";  // U+10FFFD, which no font has

TEST(Fonts, TheBuiltInOneHasLatinLetters) {
  EXPECT_EQ(render::missing_characters("Static pressure [Pa], é, °C", ""), Characters{});
  EXPECT_EQ(render::font_for("Static pressure [Pa], é, °C"), "");
}

TEST(Fonts, TellsWhichCharactersAreMissing) {
  EXPECT_EQ(render::missing_characters("a 外b圧外\t\n", ""), (Characters{U'外', U'圧'}));
  EXPECT_EQ(render::missing_characters(kPrivate, ""), Characters{0x10FFFD});
}

TEST(Fonts, BlanksAreNeverMissing) {
  EXPECT_EQ(render::missing_characters(" \t\u00a0\u3000", ""), Characters{});
}

TEST(Fonts, StopsAtWhatIsNotUtf8) {
  EXPECT_EQ(render::missing_characters("\xff圧", ""), Characters{});
}

TEST(Fonts, FindsAnInstalledFontWithMoreCharacters) {
  const std::string text = "Привет αβγ";
  const std::string font = render::font_for(text + kPrivate);
  if (font.empty()) GTEST_SKIP() << "no installed font has Greek and Cyrillic letters";
  EXPECT_TRUE(render::is_font_file(font));
  EXPECT_EQ(render::missing_characters(text + kPrivate, font), Characters{0x10FFFD});
  EXPECT_EQ(render::font_for(text), font);
}

TEST(Fonts, NoFontIsBetterThanTheBuiltInOneForPrivateCharacters) {
  EXPECT_EQ(render::font_for(std::string("a") + kPrivate), "");
}

TEST(Fonts, KnowsFontFilesByTheirBeginning) {
  const std::filesystem::path path = std::filesystem::temp_directory_path() / "fld-fonts-test";
  std::ofstream(path, std::ios::binary) << "OTTO";
  EXPECT_TRUE(render::is_font_file(path.string()));
  std::ofstream(path, std::ios::binary) << "OTT";
  EXPECT_FALSE(render::is_font_file(path.string()));
  std::filesystem::remove(path);
  EXPECT_FALSE(render::is_font_file(path.string()));
}

}  // namespace
