// Wrong command lines, help, version, and outputs that cannot be written: one line and an exit status each.
#include "gtest/gtest.h"
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include "tests/tool/run_fldtool.h"
#include "tests/tool/tool_datasets.h"

namespace {

using tool_test::Result;
using tool_test::run_fldtool;

class CommandLine : public testing::Test {
 protected:
  CommandLine() : dataset(tool_test::one_of_each_file()) {}

  // Runs the tool and expects exactly one line on the standard error stream, and no output.
  void expect_error(const std::vector<std::string>& arguments, int status, const std::string& line) const {
    const Result result = run_fldtool(arguments);
    EXPECT_EQ(result.status, status) << line;
    EXPECT_EQ(result.errors, "fldtool: " + line + "\n");
    EXPECT_EQ(result.output, "");
  }

  std::string file() const { return dataset.path(); }

 private:
  tool_test::OneFile dataset;
};

TEST_F(CommandLine, NeedsACommand) {
  expect_error({}, 2, "a command is missing (see fldtool --help)");
}

TEST_F(CommandLine, RejectsUnknownCommandsAndArguments) {
  expect_error({"show"}, 2, "there is no command 'show' (see fldtool --help)");
  expect_error({"sttas", file()}, 2,
               "there is no command 'sttas'; did you mean 'stats'? (see fldtool --help)");
  expect_error({"info", file(), "more"}, 2, "fldtool info does not expect 'more' (see fldtool info --help)");
  expect_error({"info", file(), "--bogus"}, 2,
               "fldtool info has no option --bogus (see fldtool info --help)");
  expect_error(
      {"info", file(), "--stpe=3"}, 2,
      "fldtool info has no option --stpe; did you mean '--step' or '--steps'? (see fldtool info --help)");
  // It says more than that FILE is missing.
  expect_error({"stats", "--jsno"}, 2,
               "fldtool stats has no option --jsno; did you mean '--json'? (see fldtool stats --help)");
  expect_error({"--verson"}, 2,
               "fldtool has no option --verson; did you mean '--version'? (see fldtool --help)");
}

TEST_F(CommandLine, NeedsTheFile) {
  expect_error({"info"}, 2, "FILE is required (see fldtool info --help)");
  expect_error({"sample"}, 2, "DIR is required (see fldtool sample --help)");
  expect_error({"values", file(), "--variable", "p"}, 2, "--part is required (see fldtool values --help)");
  expect_error({"values", file(), "--part", "1"}, 2, "--variable is required (see fldtool values --help)");
}

TEST_F(CommandLine, RejectsStepsThatAreNone) {
  expect_error({"info", file(), "--step", "x"}, 2,
               "--step: 'x' is not a step: write 4, 2-5, 6-, 0-100:10 or last (see fldtool info --help)");
  expect_error({"info", file(), "--step", "-1"}, 2,
               "--step: '-1' is not a step: write 4, 2-5, 6-, 0-100:10 or last (see fldtool info --help)");
  expect_error({"info", file(), "--step", "1"}, 2, file() + ": there is no step 1: the steps are 0 to 0");
}

TEST_F(CommandLine, RejectsPartsAndVariablesThatAreNone) {
  expect_error({"values", file(), "-p", "9", "--variable", "p"}, 2,
               file() + ": there is no part '9': the parts are 1 to 5");
  expect_error({"values", file(), "-p", "nowhere", "--variable", "p"}, 2,
               file() + ": there is no part 'nowhere': the parts are 1 to 5");
  expect_error({"values", file(), "-p", "1", "--variable", "q"}, 2,
               file() + ": there is no variable 'q': the variables are 1 to 3");
  expect_error({"values", file(), "-p", "1", "--variable", "p", "-c", "1"}, 2,
               file() + ": variable p has no component y");
  expect_error({"values", file(), "-p", "1", "--variable", "v", "-c", "3"}, 2,
               "--component: '3' is none of 0, 1, 2, magnitude, x, y, z (see fldtool values --help)");
}

TEST_F(CommandLine, RejectsAnArrayWithoutAFile) {
  expect_error({"values", file(), "-p", "1", "--variable", "p", "--format", "npy"}, 2,
               "--format npy needs --output (- for the standard output stream)");
}

TEST_F(CommandLine, RejectsOutputsOfAnotherFormat) {
  expect_error({"values", file(), "-p", "1", "--variable", "p", "-o", "x.xlsx"}, 2,
               "x.xlsx: cannot write '.xlsx' files: the name has to end in .csv or .npy");
  EXPECT_FALSE(std::filesystem::exists("x.xlsx"));
}

TEST_F(CommandLine, RejectsEmptyFileNames) {
  expect_error({"values", file(), "-p", "1", "--variable", "p", "-o", ""}, 2,
               "--output: the file name is empty (see fldtool values --help)");
  expect_error({"info", ""}, 2, "FILE: the file name is empty (see fldtool info --help)");
  expect_error({"info", file(), "--plugin", ""}, 2,
               "--plugin: the file name is empty (see fldtool info --help)");
  expect_error({"diff", file(), ""}, 2, "OTHER: the file name is empty (see fldtool diff --help)");
  expect_error({"check", ""}, 2, "FILE: the file name is empty (see fldtool check --help)");
  expect_error({"layout", ""}, 2, "FILE: the file name is empty (see fldtool layout --help)");
  expect_error({"sample", ""}, 2, "DIR: the file name is empty (see fldtool sample --help)");
}

TEST_F(CommandLine, RejectsAnotherFormat) {
  EXPECT_EQ(run_fldtool({"values", file(), "-p", "1", "--variable", "p", "--format", "xml"}).status, 2);
}

TEST_F(CommandLine, TellsAPluginThatCannotBeLoaded) {
  expect_error(
      {"info", file(), "--plugin", "/no/such/plugin.so"}, 4,
      "cannot load the reader library: /no/such/plugin.so: cannot open shared object file: No such file or "
      "directory");
}

TEST_F(CommandLine, TakesThePluginFromTheEnvironment) {
  setenv("FLD_PLUGIN", "/named/nowhere.so", 1);
  const Result result = run_fldtool({"info", file()});
  unsetenv("FLD_PLUGIN");
  EXPECT_EQ(result.status, 4);
  EXPECT_NE(result.errors.find("/named/nowhere.so"), std::string::npos) << result.errors;
}

TEST_F(CommandLine, TakesAPluginByItsPath) {
  EXPECT_EQ(run_fldtool({"info", file(), "--plugin", FLD_PLUGIN_FILE}).status, 0);
}

// What a caller has then is the exit status.
TEST_F(CommandLine, EndsInTheSameWayWhenItsMessageCannotBeWritten) {
  for (const char* errors : {"/dev/full", tool_test::kClosed}) {
    EXPECT_EQ(run_fldtool({"info", "/no/such/file.fld"}, "", errors).status, 3) << errors;
    EXPECT_EQ(run_fldtool({"check", "/no/such/file.fld"}, "", errors).status, 3) << errors;
    EXPECT_EQ(run_fldtool({"show"}, "", errors).status, 2) << errors;
    EXPECT_EQ(run_fldtool({"info", file(), "--plugin", "/no/such/plugin.so"}, "", errors).status, 4)
        << errors;
    EXPECT_EQ(run_fldtool({"info", file()}, "/dev/full", errors).status, 4) << errors;
    EXPECT_EQ(run_fldtool({"info", file(), "--verbose"}, "", errors).status, 0) << errors;
  }
}

TEST_F(CommandLine, NoticesOutputsThatCannotBeWritten) {
  for (const std::vector<std::string>& arguments : {std::vector<std::string>{"info", file()},
                                                    {"info", file(), "--json"},
                                                    {"info", "--help"},
                                                    {"--help"},
                                                    {"--help-all"},
                                                    {"--version"},
                                                    {"values", file(), "-p", "5", "--variable", "v"}}) {
    const Result result = run_fldtool(arguments, "/dev/full");
    EXPECT_EQ(result.status, 4) << arguments.front();
    EXPECT_EQ(result.errors, "fldtool: standard output: cannot write: No space left on device\n");
    const Result closed = run_fldtool(arguments, tool_test::kClosed);
    EXPECT_EQ(closed.status, 4) << arguments.front();
    EXPECT_EQ(closed.errors, "fldtool: standard output: cannot write: Bad file descriptor\n");
  }
  expect_error({"values", file(), "-p", "1", "--variable", "p", "-o", "/no/such/folder/a.csv"}, 4,
               "/no/such/folder/a.csv: cannot write: No such file or directory");
}

TEST_F(CommandLine, PrintsVersionAndHelp) {
  const Result version = run_fldtool({"--version"});
  EXPECT_EQ(version.status, 0);
  EXPECT_EQ(version.output, "fldtool 1.02\n");
  const Result help = run_fldtool({"--help"});
  EXPECT_EQ(help.status, 0);
  for (const char* word : {"check", "info", "layout", "values", "sample", "Exit status: 0 success"}) {
    EXPECT_NE(help.output.find(word), std::string::npos) << word;
  }
  for (const char* command : {"check", "info", "layout", "values", "sample"}) {
    const Result manual = run_fldtool({command, "--help"});
    EXPECT_EQ(manual.status, 0);
    EXPECT_NE(manual.output.find("Exit status: 0 success"), std::string::npos) << command;
  }
}

TEST_F(CommandLine, ShowsTheReadersDiagnosticsWhenAskedTo) {
  EXPECT_EQ(run_fldtool({"info", file()}).errors, "");
  const Result verbose = run_fldtool({"info", file(), "--verbose"});
  EXPECT_EQ(verbose.status, 0);
  EXPECT_NE(verbose.errors.find("IN ( FLD): " + file() + "\n"), std::string::npos) << verbose.errors;
  EXPECT_NE(verbose.errors.find("read done\n"), std::string::npos) << verbose.errors;
}

// The commands that look at files without the reader.
TEST_F(CommandLine, CheckAndLayoutNeedAFileAndAPlaceToWrite) {
  for (const std::string command : {"check", "layout"}) {
    expect_error({command}, 2, "FILE is required (see fldtool " + command + " --help)");
    const Result full = run_fldtool({command, file()}, "/dev/full");
    EXPECT_EQ(full.status, 4) << command;
    EXPECT_EQ(full.errors, "fldtool: standard output: cannot write: No space left on device\n") << command;
  }
}

}  // namespace
