// The scripts by which bash and zsh complete the command line.
#include "gtest/gtest.h"
#include <cstdio>
#include <cstdlib>
#include <string>

#include "tests/tool/run_fldtool.h"

namespace {

using tool_test::run_fldtool;

// What bash offers for the words, of which the last one is being typed.
std::string completed(const std::string& words) {
  const std::string script = "source <(" + std::string(FLDTOOL) + " help --bash); COMP_WORDS=(" + words +
                             "); COMP_CWORD=$((${#COMP_WORDS[@]} - 1)); _fldtool; echo \"${COMPREPLY[*]}\"";
  std::FILE* pipe = popen(("bash -c '" + script + "'").c_str(), "r");
  char text[4000] = {};
  const std::size_t size = fread(text, 1, sizeof text - 1, pipe);
  EXPECT_EQ(pclose(pipe), 0);
  return {text, size};
}

TEST(Completion, BashOffersCommandsAndTheirOptions) {
  EXPECT_EQ(completed("fldtool st"), "stats\n");
  EXPECT_EQ(completed("fldtool stats --his"), "--histogram\n");
  EXPECT_EQ(completed("fldtool check case.fld --al"), "--alone\n");
  EXPECT_EQ(completed("fldtool help val"), "values\n");
  EXPECT_EQ(completed("fldtool --vers"), "--version\n");
  // Files are left to the shell.
  EXPECT_EQ(completed("fldtool info case"), "\n");
  EXPECT_EQ(completed("fldtool nothing --"), "\n");
}

TEST(Completion, ZshHasEveryCommand) {
  const tool_test::Result zsh = run_fldtool({"help", "--zsh"});
  EXPECT_EQ(zsh.status, 0);
  EXPECT_TRUE(zsh.output.starts_with("#compdef fldtool\n")) << zsh.output;
  EXPECT_NE(zsh.output.find("'stats:"), std::string::npos) << zsh.output;
  EXPECT_NE(zsh.output.find("    values) names=("), std::string::npos) << zsh.output;
  if (std::system("command -v zsh >/dev/null") != 0) GTEST_SKIP() << "zsh is not installed";
  EXPECT_EQ(std::system(("bash -c 'zsh -n <(" + std::string(FLDTOOL) + " help --zsh)'").c_str()), 0);
}

}  // namespace
