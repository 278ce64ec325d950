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
  expect_error({"show"}, 2, "The following argument was not expected: show (see fldtool --help)");
  expect_error({"info", file(), "more"}, 2,
               "The following argument was not expected: more (see fldtool --help)");
  expect_error({"info", file(), "--fast"}, 2,
               "The following argument was not expected: --fast (see fldtool --help)");
}

TEST_F(CommandLine, NeedsTheFile) {
  expect_error({"info"}, 2, "FILE is required (see fldtool --help)");
  expect_error({"sample"}, 2, "DIR is required (see fldtool --help)");
  expect_error({"values", file(), "--variable", "p"}, 2, "--part is required (see fldtool --help)");
  expect_error({"values", file(), "--part", "1"}, 2, "--variable is required (see fldtool --help)");
}

TEST_F(CommandLine, RejectsStepsThatAreNone) {
  expect_error({"info", file(), "--step", "x"}, 2,
               "--step: Value x not in range 0 to 2147483647 (see fldtool --help)");
  expect_error({"info", file(), "--step", "-1"}, 2,
               "--step: Value -1 not in range 0 to 2147483647 (see fldtool --help)");
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
               file() + ": variable p has no component 1");
  expect_error({"values", file(), "-p", "1", "--variable", "v", "-c", "3"}, 2,
               "--component: Value 3 not in range 0 to 2 (see fldtool --help)");
}

TEST_F(CommandLine, RejectsAnArrayWithoutAFile) {
  expect_error({"values", file(), "-p", "1", "--variable", "p", "--format", "npy"}, 2,
               "--format npy needs --output (- for the standard output stream)");
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
  const auto plugin = std::filesystem::path(FLDTOOL).parent_path() / "libuserd-fld.so";
  EXPECT_EQ(run_fldtool({"info", file(), "--plugin", plugin.string()}).status, 0);
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
  for (const char* word : {"check", "info", "layout", "values", "sample", "Exit status: 0 fine"}) {
    EXPECT_NE(help.output.find(word), std::string::npos) << word;
  }
  for (const char* command : {"check", "info", "layout", "values", "sample"}) {
    const Result manual = run_fldtool({command, "--help"});
    EXPECT_EQ(manual.status, 0);
    EXPECT_NE(manual.output.find("Exit status: 0 fine"), std::string::npos) << command;
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
    expect_error({command}, 2, "FILE is required (see fldtool --help)");
    const Result full = run_fldtool({command, file()}, "/dev/full");
    EXPECT_EQ(full.status, 4) << command;
    EXPECT_EQ(full.errors, "fldtool: standard output: cannot write: No space left on device\n") << command;
  }
}

}  // namespace
