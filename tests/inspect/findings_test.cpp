// The table of findings and its page, the limit, and texts.
#include "gtest/gtest.h"
#include <fstream>
#include <sstream>

#include "inspect/finding_kinds.h"
#include "inspect/report.h"
#include "inspect/text_check.h"
#include "tests/inspect/checked.h"

namespace {

using inspect::Findings;
using inspect::Kind;

TEST(FindingKinds, StandInTheOrderOfTheirNumbers) {
  int last = 100;
  for (const inspect::KindInfo& kind : inspect::all_kinds()) {
    EXPECT_GT(static_cast<int>(kind.kind), last);
    last = static_cast<int>(kind.kind);
    EXPECT_EQ(inspect::info(kind.kind).text, kind.text);
  }
}

// A row of the page: | FLD-106 | error | text | meaning |
TEST(FindingKinds, AreAllOnTheirPage) {
  std::ifstream page(FINDINGS_PAGE);
  ASSERT_TRUE(page);
  std::vector<std::string> rows;
  for (std::string row; std::getline(page, row);) {
    if (row.starts_with("| FLD-")) rows.push_back(row);
  }
  std::vector<std::string> wanted;
  for (const inspect::KindInfo& kind : inspect::all_kinds()) {
    std::ostringstream row;
    row << "| " << inspect::number_text(kind.kind) << " | " << inspect::name(kind.severity) << " | "
        << kind.text << " | " << kind.meaning << " |";
    wanted.push_back(row.str());
  }
  EXPECT_EQ(rows, wanted);
}

TEST(FindingLimit, KeepsTheFirstOfEachKindAndCountsTheRest) {
  Findings findings(2);
  for (std::uint64_t i = 0; i < 5; ++i) findings.add({Kind::element_node, 100 - i, "", "", ""});
  findings.add({Kind::name_twice, 7, "", "", ""});
  findings.add({Kind::undefined_share, 8, "", "", ""});
  findings.sort();
  ASSERT_EQ(findings.kept().size(), 4U);
  EXPECT_EQ(findings.kept()[0].offset, 7U);
  EXPECT_EQ(findings.kept()[2].offset, 99U);
  EXPECT_EQ(findings.left_out(Kind::element_node), 3U);
  EXPECT_EQ(findings.left_out(Kind::name_twice), 0U);
  EXPECT_EQ(findings.count(inspect::Severity::error), 5U);
  EXPECT_EQ(findings.count(inspect::Severity::warning), 1U);
  EXPECT_EQ(findings.count(inspect::Severity::note), 1U);
}

TEST(Texts, AsciiShiftJisAndUtf8) {
  EXPECT_TRUE(inspect::is_text("wall 1"));
  EXPECT_TRUE(inspect::is_text(""));
  EXPECT_TRUE(inspect::is_text("\x95\x5c\x96\xca"));  // two characters, one with a backslash
  EXPECT_TRUE(inspect::is_text("\xb1\xb2"));          // half-width katakana
  EXPECT_TRUE(inspect::is_text("\x8a\x4f\x93"));      // incomplete
  EXPECT_TRUE(inspect::is_text("\xe5\xa4\x96"));      // UTF-8
  EXPECT_TRUE(inspect::is_text("\xf0\x9f\x98\x80"));
  EXPECT_FALSE(inspect::is_text("\x80"));
  EXPECT_FALSE(inspect::is_text("a\tb"));
  EXPECT_FALSE(inspect::is_text(std::string(1, '\0')));
  EXPECT_FALSE(inspect::is_text("\x7f"));
  EXPECT_FALSE(inspect::is_text("\x81\x20"));
  EXPECT_FALSE(inspect::is_text("\xff"));
}

TEST(Texts, AreShownSoThatTheyCanBePrinted) {
  EXPECT_EQ(inspect::in_quotes("wall"), "\"wall\"");
  EXPECT_EQ(inspect::in_quotes("\x8a\x4f"), "\"\x8a\x4f\"");
  EXPECT_EQ(inspect::in_quotes("\x8a\x4f\x01"), "\"\\x8aO\\x01\"");
}

std::string unchanged(const std::string& text) {
  return text;
}

TEST(Reports, AsText) {
  inspect::FileReport report("case.fld", 1);
  report.findings.add({Kind::trailing_marker, 1234, "LS_Nodes, x", "16", "20"});
  report.findings.add({Kind::trailing_marker, 2000, "LS_Nodes, y", "16", "20"});
  report.findings.add({Kind::undefined_share, 3000, "", "defined values", "1 of 4"});
  EXPECT_EQ(
      inspect::report_text(report, false, unchanged),
      "case.fld: error FLD-106 at 1234: the markers of a record differ (LS_Nodes, x): wanted 16, found 20\n"
      "case.fld: FLD-106: 1 more of 2\n"
      "case.fld: 2 errors\n");
  EXPECT_EQ(
      inspect::report_text(report, true, unchanged),
      "case.fld: error FLD-106 at 1234: the markers of a record differ (LS_Nodes, x): wanted 16, found 20\n"
      "case.fld: note FLD-704 at 3000: undefined values: wanted defined values, found 1 of 4\n"
      "case.fld: FLD-106: 1 more of 2\n"
      "case.fld: 2 errors, 1 note\n");
  EXPECT_EQ(inspect::report_text(inspect::FileReport("good.fld", 1), false, unchanged),
            "good.fld: no findings\n");
}

TEST(Reports, SayWhereTheWalkStopped) {
  inspect::FileReport report("case.fld", 1);
  report.size = 5000;
  report.walk = {inspect::WalkEnd::stopped, 1234};
  report.findings.add({Kind::framing_lost, 1234, "", "a record", "the marker -1"});
  EXPECT_EQ(inspect::report_text(report, false, unchanged),
            "case.fld: error FLD-108 at 1234: no record begins here: wanted a record, found the marker -1\n"
            "case.fld: 1 error; nothing behind offset 1234 of 5000 was looked at\n");
}

}  // namespace
