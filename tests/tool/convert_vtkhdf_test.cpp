// `fldtool convert FILE OUT.vtkhdf`: the options and messages; tests/vtkhdf/ looks into the files.
#include "gtest/gtest.h"
#include <csignal>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <map>
#include <string>
#include <vector>
#include <vtkFloatArray.h>
#include <vtkPointData.h>

#include "samples/tank.h"
#include "testkit/temporary_directory.h"
#include "tests/tool/converted_series.h"
#include "tests/tool/run_fldtool.h"
#include "tests/vtkhdf/hdf_collection.h"

namespace {

namespace fs = std::filesystem;
using tool_test::Result;
using tool_test::run_fldtool;

class ConvertToVtkHdf : public testing::Test {
 protected:
  ConvertToVtkHdf() : path(samples::tank::write(directory.path()).file.string()) {}

  std::string in(const std::string& name) const { return (directory / name).string(); }

  testkit::TemporaryDirectory directory;
  std::string path;
};

TEST_F(ConvertToVtkHdf, NamesTheOneFile) {
  const Result result = run_fldtool({"convert", path, in("new/tank.vtkhdf"), "--steps", "0-1"});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.output, in("new/tank.vtkhdf") + "\n");
  EXPECT_EQ(result.errors, "");
  std::size_t files = 0;
  for ([[maybe_unused]] const auto& entry : fs::directory_iterator(directory / "new")) ++files;
  EXPECT_EQ(files, 1U);
}

TEST_F(ConvertToVtkHdf, IsSmallerWhenCompressed) {
  ASSERT_EQ(run_fldtool({"convert", path, in("plain.vtkhdf"), "--steps", "0"}).status, 0);
  ASSERT_EQ(run_fldtool({"convert", path, in("zlib.vtkhdf"), "--steps", "0", "--compress", "zlib"}).status,
            0);
  ASSERT_EQ(run_fldtool({"convert", path, in("wide.vtkhdf"), "--steps", "0", "--precision", "double"}).status,
            0);
  EXPECT_LT(fs::file_size(in("zlib.vtkhdf")), fs::file_size(in("plain.vtkhdf")) * 3 / 4);
  EXPECT_GT(fs::file_size(in("wide.vtkhdf")), fs::file_size(in("plain.vtkhdf")) * 5 / 4);
}

TEST_F(ConvertToVtkHdf, HasDerivedVariablesAsTheSeriesHas) {
  const tool_test::Names options = {
      "--steps", "3", "--parts", "blade_1,tank_zone", "--variables", "Velocity,mag(Velocity),grad(Pressure)"};
  const fs::path series = tool_test::convert(path, directory / "tank.pvd", options);
  const tool_test::Composite step(tool_test::steps_of(series).front().file);
  std::vector<std::string> arguments = {"convert", path, in("tank.vtkhdf")};
  arguments.insert(arguments.end(), options.begin(), options.end());
  ASSERT_EQ(run_fldtool(arguments).status, 0);
  const vtkhdf_test::Collection file(in("tank.vtkhdf"));
  for (const char* part : {"blade_1", "tank_zone"}) {
    for (const char* name : {"Velocity", "mag(Velocity)", "grad(Pressure)"}) {
      const auto* wanted = vtkFloatArray::SafeDownCast(step.part(part)->GetPointData()->GetArray(name));
      ASSERT_NE(wanted, nullptr) << name;
      const std::vector<float> found = file.values(part, "PointData", name, 0);
      ASSERT_EQ(found.size(), static_cast<std::size_t>(wanted->GetNumberOfValues())) << name;
      for (std::size_t i = 0; i < found.size(); ++i)
        ASSERT_EQ(found[i], wanted->GetValue(static_cast<vtkIdType>(i))) << name << " at " << i;
    }
  }
}

TEST_F(ConvertToVtkHdf, KnowsNoLz4) {
  const Result result = run_fldtool({"convert", path, in("x.vtkhdf"), "--compress", "lz4"});
  EXPECT_EQ(result.status, 2);
  EXPECT_EQ(result.errors, "fldtool: --compress: a .vtkhdf file is compressed with zlib alone\n");
  EXPECT_FALSE(fs::exists(in("x.vtkhdf")));
}

TEST_F(ConvertToVtkHdf, IsWrittenByOneJob) {
  const Result result = run_fldtool({"convert", path, in("x.vtkhdf"), "--jobs", "2"});
  EXPECT_EQ(result.status, 2);
  EXPECT_EQ(result.errors, "fldtool: --jobs: a .vtkhdf file is written by one job\n");
  EXPECT_EQ(run_fldtool({"convert", path, in("X.VTKHDF"), "--jobs", "1", "--steps", "0"}).status, 0);
  EXPECT_TRUE(fs::is_regular_file(in("X.VTKHDF")));
}

TEST_F(ConvertToVtkHdf, TellsThatAFileCannotBeWritten) {
  fs::create_directory(in("taken.vtkhdf"));
  const Result result = run_fldtool({"convert", path, in("taken.vtkhdf")});
  EXPECT_EQ(result.status, 4);
  EXPECT_EQ(result.errors, "fldtool: " + in("taken.vtkhdf") + ": cannot write: Is a directory\n");
  EXPECT_TRUE(fs::is_empty(in("taken.vtkhdf")));
}

TEST_F(ConvertToVtkHdf, TellsThatAFileIsFull) {
  // The child's files may not grow beyond a few KB, and no signal tells it.
  const std::string command = "exec 2>&1; trap '' XFSZ; (ulimit -f 64; exec " FLDTOOL " convert " + path +
                              " " + in("x.vtkhdf") + "); echo $?";
  std::FILE* pipe = popen(command.c_str(), "r");
  ASSERT_NE(pipe, nullptr);
  char text[1000] = {};
  const std::size_t size = fread(text, 1, sizeof text - 1, pipe);
  pclose(pipe);
  EXPECT_EQ(std::string(text, size), "fldtool: " + in("x.vtkhdf") + ": cannot write: File too large\n4\n");
  for (const auto& entry : fs::directory_iterator(directory.path()))
    EXPECT_EQ(entry.path().string().find("vtkhdf"), std::string::npos) << entry.path();
}

TEST_F(ConvertToVtkHdf, KeepsALink) {
  fs::create_symlink("real.vtkhdf", in("link.vtkhdf"));
  ASSERT_EQ(run_fldtool({"convert", path, in("real.vtkhdf"), "--steps", "0"}).status, 0);
  const auto size = fs::file_size(in("real.vtkhdf"));
  ASSERT_EQ(run_fldtool({"convert", path, in("link.vtkhdf"), "--steps", "0-1"}).status, 0);
  EXPECT_TRUE(fs::is_symlink(in("link.vtkhdf")));
  EXPECT_GT(fs::file_size(in("real.vtkhdf")), size);
}

class InterruptedVtkHdf : public testing::TestWithParam<int> {};

TEST_P(InterruptedVtkHdf, HasTheStepsDone) {
  const testkit::TemporaryDirectory directory;
  const std::string from = samples::tank::write(directory.path()).file.string();
  const fs::path to = directory / "out.vtkhdf";
  const Result result = tool_test::run_fldtool_and_interrupt_when(
      {"convert", from, to.string()}, [&](pid_t) { return fs::exists(to); }, GetParam());
  EXPECT_EQ(result.status, GetParam() == SIGKILL ? -1 : 130);
  const vtkhdf_test::Collection file(to);
  for (const auto& [block, nodes] :
       std::map<std::string, std::size_t>{{"blade_1", 60}, {"tank_zone", 14287}}) {
    EXPECT_GE(file.steps(block), 1);
    EXPECT_LT(file.steps(block), 8);
    for (std::int64_t step = 0; step < file.steps(block); ++step) {
      EXPECT_EQ(file.grid(block, step).points.size(), nodes * 3);
      EXPECT_EQ(file.values(block, "PointData", "Velocity", step).size(), nodes * 3);
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Signals, InterruptedVtkHdf, testing::Values(SIGINT, SIGTERM, SIGKILL));

}  // namespace
