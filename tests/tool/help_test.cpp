// The manual: on the command line, and as a page for man(1).
#include "gtest/gtest.h"
#include <cstdlib>
#include <string>
#include <vector>

#include "tests/tool/run_fldtool.h"
#include "tool/man_page.h"

namespace {

using tool_test::Result;
using tool_test::run_fldtool;

// The commands that the program's help lists.
std::vector<std::string> commands() {
  const std::string help = run_fldtool({"--help"}).output;
  std::vector<std::string> names;
  const std::string heading = "\nSubcommands:\n";
  for (std::size_t line = help.find(heading) + heading.size(); help.compare(line, 2, "  ") == 0;
       line = help.find('\n', line) + 1) {
    names.push_back(help.substr(line + 2, help.find(' ', line + 2) - line - 2));
  }
  return names;
}

TEST(Help, IsTheSameInBothWays) {
  EXPECT_GE(commands().size(), 6U);
  EXPECT_EQ(run_fldtool({"help"}).output, run_fldtool({"--help"}).output);
  for (const std::string& command : commands()) {
    const Result help = run_fldtool({"help", command});
    EXPECT_EQ(help.status, 0);
    EXPECT_EQ(help.output, run_fldtool({command, "--help"}).output);
    EXPECT_NE(help.output.find("Usage: fldtool " + command + " "), std::string::npos) << help.output;
    EXPECT_NE(help.output.find("Exit status: 0 success"), std::string::npos) << help.output;
  }
}

TEST(Help, KnowsNoOtherCommands) {
  const Result result = run_fldtool({"help", "show"});
  EXPECT_EQ(result.status, 2);
  EXPECT_EQ(result.errors, "fldtool: there is no command 'show' (see fldtool --help)\n");
  EXPECT_EQ(result.output, "");
}

TEST(Help, NoticesAnOutputThatCannotBeWritten) {
  const Result result = run_fldtool({"help", "--man"}, "/dev/full");
  EXPECT_EQ(result.status, 4);
  EXPECT_EQ(result.errors, "fldtool: standard output: cannot write: No space left on device\n");
}

TEST(ManPage, HasEveryCommandWithItsOptions) {
  const Result page = run_fldtool({"help", "--man"});
  EXPECT_EQ(page.status, 0);
  EXPECT_EQ(page.output.find(".TH FLDTOOL 1 "), 0U);
  for (const std::string& command : commands()) {
    EXPECT_NE(page.output.find("\n.SS fldtool " + command + "\n"), std::string::npos) << command;
  }
  EXPECT_NE(page.output.find("\n.B \\-\\-step,\\-\\-steps LIST (default: 0)\nThe step to show; several "
                             "are shown with ranges\n"),
            std::string::npos);
  // Said once for all.
  const std::size_t status = page.output.find("Exit status: 0 success");
  EXPECT_NE(status, std::string::npos);
  EXPECT_EQ(page.output.find("Exit status: 0 success", status + 1), std::string::npos);
}

TEST(ManPage, IsFineForTroff) {
  if (std::system("command -v groff >/dev/null 2>&1") != 0) GTEST_SKIP() << "groff is not installed";
  const std::string check = std::string(FLDTOOL) + " help --man | groff -man -Tascii -ww -z 2>&1 | grep -c .";
  EXPECT_NE(std::system((check + " >/dev/null").c_str()), 0) << "groff has something to say";
}

TEST(ManText, MakesParagraphsOfPlainLines) {
  EXPECT_EQ(tool::man_text("One\nparagraph.\n\nAnother.\n"), ".PP\nOne\nparagraph.\n.PP\nAnother.\n");
}

TEST(ManText, MakesListsOfLinesWithTwoColumns) {
  EXPECT_EQ(
      tool::man_text("It prints:\n  size   the bytes\n         of it\n  name\n    inner  deep\nSo it is.\n"),
      ".PP\nIt prints:\n.TP\nsize\nthe bytes\nof it\n.TP\nname\n.TP\n  inner\ndeep\n.PP\nSo it is.\n");
  EXPECT_EQ(tool::man_text("csv  A line,\n     and another.\n"), ".TP\ncsv\nA line,\nand another.\n");
}

TEST(ManText, EscapesWhatTroffWouldInterpret) {
  EXPECT_EQ(tool::man_text(".so it\n'begins\n--full \\n\n"), ".PP\n\\&.so it\n\\&'begins\n\\-\\-full \\en\n");
}

}  // namespace
