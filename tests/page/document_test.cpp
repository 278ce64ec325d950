#include "page/document.h"

#include "gtest/gtest.h"
#include <string>

#include "nlohmann/json.hpp"

namespace {

std::string page_with(const std::string& title, const nlohmann::json& about) {
  std::string text;
  page::write_page(title, about, page::Scene(0, {}), {}, [&](std::string_view piece) { text += piece; });
  return text;
}

std::size_t count_of(const std::string& text, const std::string& words) {
  std::size_t count = 0;
  for (std::size_t at = text.find(words); at != std::string::npos; at = text.find(words, at + 1)) ++count;
  return count;
}

TEST(PageDocument, KeepsNamesOutOfTheMarkup) {
  const std::string hostile = "</script><script>alert(1)</script><!-- ]]> & \"'";
  const std::string plain = page_with("x", {{"name", "x"}});
  const std::string text = page_with(hostile, {{"name", hostile}});
  EXPECT_EQ(count_of(text, "<script"), count_of(plain, "<script"));
  EXPECT_EQ(count_of(text, "</script"), count_of(plain, "</script"));
  EXPECT_EQ(count_of(text, "<!--"), count_of(plain, "<!--"));
  EXPECT_NE(text.find("&lt;/script&gt;&lt;script&gt;alert(1)"), std::string::npos);
  EXPECT_NE(text.find("\\u003c/script\\u003e\\u003cscript\\u003ealert(1)"), std::string::npos);
}

TEST(PageDocument, AllowsNothingFromOutside) {
  const std::string text = page_with("x", {});
  EXPECT_NE(text.find("content=\"default-src 'none'; script-src 'sha256-"), std::string::npos);
  EXPECT_EQ(text.find("unsafe-inline"), std::string::npos);
  EXPECT_EQ(text.find("unsafe-eval"), std::string::npos);
  EXPECT_EQ(count_of(text, " src="), 0U);
  EXPECT_EQ(count_of(text, "<link"), 0U);
}

TEST(PageDocument, HasJsonInAscii) {
  EXPECT_EQ(page::escape_json({"\xc3\xa9\xe2\x80\xa8<>&"}), R"(["\u00e9\u2028\u003c\u003e\u0026"])");
  EXPECT_EQ(page::escape_json({"\xff"}), "[\"\\ufffd\"]");
}

TEST(PageDocument, EscapesMarkup) {
  EXPECT_EQ(page::escape_markup("<a b=\"c\" d='e'>&"), "&lt;a b=&quot;c&quot; d=&#39;e&#39;&gt;&amp;");
}

}  // namespace
