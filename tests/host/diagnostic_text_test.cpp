#include "host/diagnostic_text.h"

#include "gtest/gtest.h"
#include <cerrno>
#include <string>
#include <vector>

namespace {

using Texts = std::vector<std::string>;

TEST(DiagnosticText, ReasonIsTheLastTwoMessages) {
  EXPECT_EQ(host::reason_in_diagnostics("one\ntwo\nthree"), "two; three");
  EXPECT_EQ(host::reason_in_diagnostics("This is not FLD file.\n"), "This is not FLD file.");
}

TEST(DiagnosticText, ReasonLeavesOutTracesAndWarnings) {
  EXPECT_EQ(host::reason_in_diagnostics("one\nIN ( FLD): /a.fld\nWARNING : 3 ODD\ntwo\nread done\n"),
            "one; two");
  EXPECT_EQ(host::reason_in_diagnostics("IN ( FLD): /a.fld\n"), "");
  EXPECT_EQ(host::reason_in_diagnostics(""), "");
}

TEST(DiagnosticText, ReasonSeparatesAMessageWithoutLineEnd) {
  EXPECT_EQ(host::reason_in_diagnostics("ERROR : CUT SHORT.FAILED TO READ GEOMETRY.\n"),
            "ERROR : CUT SHORT.; FAILED TO READ GEOMETRY.");
}

TEST(DiagnosticText, ReasonHasNoProgramInFrontOfAnAssertion) {
  const std::string program = program_invocation_short_name;
  EXPECT_EQ(host::reason_in_diagnostics("one\n" + program + ": a.cpp:3: void f(): Assertion `!x' failed.\n"),
            "one; a.cpp:3: void f(): Assertion `!x' failed.");
  EXPECT_EQ(host::reason_in_diagnostics(program + " told\n"), program + " told");
}

TEST(DiagnosticText, ReasonIsNeverVeryLong) {
  const std::string reason = host::reason_in_diagnostics(std::string(100000, 'x') + "end");
  EXPECT_EQ(reason.size(), 500U);
  EXPECT_TRUE(reason.ends_with("xend"));
}

TEST(DiagnosticText, TracedFilesOnceInOrder) {
  EXPECT_EQ(
      host::traced_files("IN ( FLD): /a b.fld\nnoise\nIN ( FLD): /c.fld\nIN ( FLD): /a b.fld\nread done\n"),
      (Texts{"/a b.fld", "/c.fld"}));
}

TEST(DiagnosticText, NamesTheFileOfTheLastMessageAboutOne) {
  EXPECT_EQ(host::last_named_file("IN ( FLD): /a.fld\nIN ( FLD): /b c.fld\nNO NODES\n"), "/b c.fld");
  EXPECT_EQ(host::last_named_file("FILE NOT FOUND : /a.fld\n"), "/a.fld");
  EXPECT_EQ(host::last_named_file("FAILED TO OPEN /a.fld\n"), "/a.fld");
  EXPECT_EQ(host::last_named_file("IN ( FLD): /b.fld\nERROR : XFAILED TO READ GEOMETRY DATA IN /a.fld.\n"),
            "/a.fld");
  EXPECT_EQ(host::last_named_file("error : failed to open fld file : /a.fld.\n"), "/a.fld");
  EXPECT_EQ(host::last_named_file("WARNING : 3 ODD IN /a.fld\nThis is not FLD file.\n"), "");
}

TEST(DiagnosticText, ALongTextIsShortenedAtLineEnds) {
  constexpr std::size_t kKept = 65536;
  EXPECT_EQ(host::shortened(std::string(2 * kKept, 'x')), std::string(2 * kKept, 'x'));
  EXPECT_EQ(host::shortened(std::string(2 * kKept + 10, 'x')),
            std::string(kKept, 'x') + "\n(10 bytes of diagnostics left out)\n" + std::string(kKept, 'x'));
  // A line end alone is none of a line that was cut.
  EXPECT_EQ(host::shortened(std::string(2 * kKept + 10, 'x') + '\n'),
            std::string(kKept, 'x') + "\n(11 bytes of diagnostics left out)\n" + std::string(kKept - 1, 'x') +
                '\n');
  const std::string line = std::string(999, 'x') + '\n';
  std::string lines;
  std::string kept;
  for (int i = 0; i < 200; ++i) lines += line;
  for (int i = 0; i < 65; ++i) kept += line;
  EXPECT_EQ(host::shortened(lines), kept + "(70000 bytes of diagnostics left out)\n" + kept);
}

TEST(DiagnosticText, ReasonLeavesOutWhatTellsOfAShortenedText) {
  EXPECT_EQ(host::reason_in_diagnostics("one\n(10 bytes of diagnostics left out)\ntwo\n"), "one; two");
}

TEST(DiagnosticText, WarningsOnceInOrder) {
  EXPECT_EQ(
      host::warnings("WARNING : 3 ODD IN /a.fld\nnoise\nWARNING : 1 OTHER\nWARNING : 3 ODD IN /a.fld\n"),
      (Texts{"3 ODD IN /a.fld", "1 OTHER"}));
}

TEST(DiagnosticText, TellsAGeometryThatWasNotBroughtIn) {
  EXPECT_TRUE(host::tells_geometry_failure("ERROR : XFAILED TO READ GEOMETRY DATA IN /a.fld.\n"));
  EXPECT_TRUE(host::tells_geometry_failure("error : not found geometry data in current time.\n"));
  EXPECT_TRUE(host::tells_geometry_failure("error : failed to allocate memory for geometry.\n"));
  EXPECT_FALSE(host::tells_geometry_failure("IN ( FLD): /a.fld\nWARNING : 3 ODD\n"));
}

}  // namespace
