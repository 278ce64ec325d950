// Reports of checks as text and JSON.
#include "inspect/report.h"

#include "gtest/gtest.h"
#include <nlohmann/json.hpp>
#include <string>

#include "tests/inspect/checked.h"

namespace {

using inspect::FileReport;
using inspect::Kind;
using inspect_test::in_brackets;
using Json = nlohmann::ordered_json;

// Two errors of a kind, of which one is kept, and a note.
FileReport report_with_findings() {
  FileReport report("case.fld", 1);
  report.size = 2000;
  report.walk = {inspect::WalkEnd::complete, 1900};
  report.findings.add({Kind::trailing_marker, 1234, "LS_Nodes, x", "16", "20"});
  report.findings.add({Kind::trailing_marker, 1300, "LS_Nodes, y", "16", "21"});
  report.findings.add({Kind::no_materials, 60, "", "LS_MatOfElements", "none"});
  return report;
}

TEST(Report, AsText) {
  const FileReport report = report_with_findings();
  const std::string error =
      "case.fld: error FLD-106 at 1234: the markers of a record differ ([LS_Nodes, x]): wanted "
      "[16], found [20]\n";
  EXPECT_EQ(inspect::report_text(report, false, in_brackets),
            error + "case.fld: FLD-106: 1 more of 2\ncase.fld: 2 errors\n");
  const std::string with_notes = inspect::report_text(report, true, in_brackets);
  EXPECT_NE(with_notes.find("case.fld: note FLD-214 at 60: "), std::string::npos) << with_notes;
  EXPECT_TRUE(with_notes.ends_with("case.fld: 2 errors, 1 note\n")) << with_notes;
}

TEST(Report, AsTextWithoutFindings) {
  FileReport report("case.fld", 20);
  report.walk = {inspect::WalkEnd::complete, 100};
  EXPECT_EQ(inspect::report_text(report, true, in_brackets), "case.fld: no findings\n");
  report.reason = "is a directory";
  EXPECT_EQ(inspect::report_text(report, true, in_brackets), "case.fld: cannot be read: is a directory\n");
}

TEST(Report, AsTextTellsWhereTheCheckStopped) {
  FileReport report("case.fld", 20);
  report.size = 500;
  report.walk = {inspect::WalkEnd::stopped, 480};
  report.findings.add({Kind::title_misspelt, 40, "", "a", "b"});
  const std::string text = inspect::report_text(report, false, in_brackets);
  EXPECT_TRUE(text.ends_with("case.fld: 1 warning; nothing behind offset 480 of 500 was looked at\n"))
      << text;
}

TEST(Report, AsJson) {
  const Json json = inspect::report_json(report_with_findings(), in_brackets);
  EXPECT_EQ(json["file"], "case.fld");
  EXPECT_EQ(json["readable"], true);
  EXPECT_EQ(json["reason"], nullptr);
  EXPECT_EQ(json["size"], 2000);
  EXPECT_EQ(json["complete"], true);
  EXPECT_EQ(json["ended_at"], 1900);
  EXPECT_EQ(json["errors"], 2);
  EXPECT_EQ(json["warnings"], 0);
  EXPECT_EQ(json["notes"], 1);
  ASSERT_EQ(json["findings"].size(), 2U);
  EXPECT_EQ(json["findings"][0], (Json{{"number", "FLD-106"},
                                       {"severity", "error"},
                                       {"offset", 1234},
                                       {"text", "the markers of a record differ"},
                                       {"place", "[LS_Nodes, x]"},
                                       {"wanted", "[16]"},
                                       {"found", "[20]"}}));
  EXPECT_EQ(json["left_out"], (Json{{"FLD-106", 1}}));
}

TEST(Report, AsJsonOfAFileThatCannotBeRead) {
  FileReport report("case.fld", 20);
  report.reason = "is a directory";
  const Json json = inspect::report_json(report, in_brackets);
  EXPECT_EQ(json["readable"], false);
  EXPECT_EQ(json["reason"], "is a directory");
  EXPECT_EQ(json["complete"], false);
  EXPECT_EQ(json["findings"], Json::array());
  EXPECT_EQ(json["left_out"], Json::object());
}

// What was found there is a path, which is not in the file's encoding.
TEST(Report, APathIsNotDecoded) {
  const Json json =
      inspect::finding_json({Kind::cycle_twice, 8, "", "another cycle", "1 as in a.fld"}, in_brackets);
  EXPECT_EQ(json["found"], "1 as in a.fld");
  EXPECT_EQ(json["wanted"], "[another cycle]");
}

}  // namespace
