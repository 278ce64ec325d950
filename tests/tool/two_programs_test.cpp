// fldtool and fldtool-vtk, which it becomes for what needs VTK, are one program to their users.
#include "gtest/gtest.h"
#include <cstdlib>
#include <filesystem>
#include <optional>
#include <string>

#include "testkit/temporary_directory.h"
#include "tests/tool/run_fldtool.h"
#include "tests/tool/tool_datasets.h"

namespace {

using tool_test::fldtool;
using tool_test::one_of_each_file;
using tool_test::OneFile;
using tool_test::Result;
using tool_test::run_fldtool;

// As long as one exists, tests run this program.
class OtherProgram {
 public:
  explicit OtherProgram(const std::filesystem::path& program) {
    if (const char* const value = std::getenv("FLDTOOL")) before_ = value;
    setenv("FLDTOOL", program.c_str(), 1);
  }
  OtherProgram(const OtherProgram&) = delete;
  OtherProgram& operator=(const OtherProgram&) = delete;
  ~OtherProgram() {
    if (before_) {
      setenv("FLDTOOL", before_->c_str(), 1);
    } else {
      unsetenv("FLDTOOL");
    }
  }

 private:
  std::optional<std::string> before_;
};

void expect_same(const std::vector<std::string>& arguments) {
  const Result one = run_fldtool(arguments);
  const OtherProgram with_vtk(fldtool() + "-vtk");
  const Result other = run_fldtool(arguments);
  const std::string line = testing::PrintToString(arguments);
  EXPECT_EQ(one.status, other.status) << line;
  EXPECT_EQ(one.output, other.output) << line;
  EXPECT_EQ(one.errors, other.errors) << line;
}

TEST(TwoPrograms, SayTheSame) {
  const OneFile file(one_of_each_file());
  for (const char* command :
       {"info", "stats", "values", "integrate", "diff", "layout", "check", "sample", "probe", "help"}) {
    expect_same({command, "--help"});
    expect_same({command, "--help-all"});
    expect_same({command, "--no-such-option"});
    expect_same({command});
  }
  expect_same({});
  expect_same({"--version"});
  expect_same({"--help"});
  expect_same({"--help-all"});
  expect_same({"--versoin"});
  expect_same({""});
  expect_same({"inof"});
  expect_same({"info", file.path(), "--ranges"});
  expect_same({"stats", file.path(), "--plto", "x.png"});
  expect_same({"stats", file.path(), "--plot", "x.png"});
  expect_same({"stats", file.path(), "--variables", "mag(none)"});
}

class CopiedProgram : public testing::Test {
 protected:
  void SetUp() override {
    std::filesystem::create_directories(program().parent_path());
    std::filesystem::copy_file(fldtool(), program());
  }
  std::filesystem::path program() const { return directory_ / "bin" / "fldtool"; }
  std::filesystem::path with_vtk() const { return directory_ / "libexec" / "vantrel-fld" / "fldtool-vtk"; }

  testkit::TemporaryDirectory directory_;
};

TEST_F(CopiedProgram, DoesWithoutTheOtherWhatNeedsNoVtk) {
  const OneFile file(one_of_each_file());
  const OtherProgram copy(program());
  EXPECT_EQ(run_fldtool({"check", file.path()}).output, file.path() + ": no findings\n");
  EXPECT_EQ(run_fldtool({"--version"}).output.find("fldtool "), 0U);
  for (const char* command : {"info", "stats", "values", "integrate", "diff", "layout", "check", "sample"})
    EXPECT_EQ(run_fldtool({command, "--help"}).status, 0) << command;
  for (const char* command : {"help", "convert", "--help"}) {
    const Result result = run_fldtool({command});
    EXPECT_EQ(result.status, 4) << command;
    EXPECT_EQ(result.errors, "fldtool: " + with_vtk().string() + ": No such file or directory\n");
    EXPECT_EQ(result.output, "");
  }
}

TEST_F(CopiedProgram, FindsTheOtherWhereItIsInstalled) {
  std::filesystem::create_directories(with_vtk().parent_path());
  std::filesystem::create_symlink(fldtool() + "-vtk", with_vtk());
  const OtherProgram copy(program());
  const Result result = run_fldtool({"help", "convert"});
  EXPECT_EQ(result.status, 0) << result.errors;
  EXPECT_EQ(result.output.find("Write a dataset as VTK files\n"), 0U) << result.output;
}

}  // namespace
