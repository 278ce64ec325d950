#include "render/text.h"

#include <gtest/gtest.h>
#include <string>

namespace {

using render::fit_text;
using render::FittedText;
using render::text_width;

constexpr double kSize = 20;

TEST(FitText, LeavesWhatFits) {
  const FittedText fitted = fit_text("Pressure", {}, kSize, 200);
  EXPECT_EQ(fitted.text, "Pressure");
  EXPECT_EQ(fitted.size, kSize);
}

TEST(FitText, MakesLettersSmallerFirst) {
  const std::string text = "Pressure at the wall";
  const double width = 0.8 * text_width(text, {}, kSize);
  const FittedText fitted = fit_text(text, {}, kSize, width);
  EXPECT_EQ(fitted.text, text);
  EXPECT_LT(fitted.size, kSize);
  EXPECT_GE(fitted.size, 0.7 * kSize);
  EXPECT_LE(text_width(fitted.text, {}, fitted.size), width);
}

TEST(FitText, ShortensWhatIsStillTooLong) {
  const std::string text = "Pressure at the wall of the tank";
  const FittedText fitted = fit_text(text + "\nat t = 0", {}, kSize, 100);
  const std::size_t dots = fitted.text.find("...");
  ASSERT_NE(dots, std::string::npos);
  EXPECT_GT(dots, 3U);
  EXPECT_EQ(fitted.text.substr(0, dots), text.substr(0, dots));
  EXPECT_TRUE(fitted.text.ends_with("\nat t = 0")) << fitted.text;
  EXPECT_LE(text_width(fitted.text, {}, fitted.size), 100);
}

TEST(FitText, CutsBetweenCharacters) {
  const FittedText fitted = fit_text(std::string("éééééééééééééééééééééééé"), {}, kSize, 60);
  const std::size_t dots = fitted.text.find("...");
  ASSERT_NE(dots, std::string::npos);
  EXPECT_EQ(dots % 2, 0U);
}

TEST(TextColour, StandsOutFromTheBackground) {
  EXPECT_LT(render::text_colour({1, 1, 1})[0], 0.2);
  EXPECT_GT(render::text_colour({0, 0, 0})[0], 0.8);
  EXPECT_GT(render::text_colour({0, 0, 1})[0], 0.8);
  EXPECT_LT(render::text_colour({1, 1, 0})[0], 0.2);
}

}  // namespace
