// What becomes of the files around `fldtool convert`: what it replaces, leaves and removes, what it says when
// it cannot go on, and what is there when it is interrupted.
#include "gtest/gtest.h"
#include <algorithm>
#include <csignal>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <set>
#include <string>
#include <vector>

#include "samples/samples.h"
#include "samples/tank.h"
#include "testkit/file_writer.h"
#include "tests/host/open_file.h"
#include "tests/tool/converted_series.h"
#include "tests/tool/run_fldtool.h"
#include "tests/tool/tool_datasets.h"

namespace {

namespace fs = std::filesystem;
using tool_test::CollectionStep;
using tool_test::Composite;
using tool_test::convert;
using tool_test::expect_steps;
using tool_test::files_in;
using tool_test::Names;
using tool_test::Result;
using tool_test::run_fldtool;
using tool_test::steps_of;

class ConvertOutput : public tool_test::ConvertTest {};

TEST_F(ConvertOutput, ReplacesWhatWasThere) {
  const std::string file = write_series(3);
  convert(file, collection);
  convert(file, collection, {"--steps", "1", "--parts", "lower"});
  ASSERT_EQ(steps_of(collection).size(), 1U);
  EXPECT_EQ(Composite(steps_of(collection)[0].file).places(), Names{"Volumes/lower"});
  EXPECT_EQ(files_in(dataset.directory() / "out"),
            (std::set<std::string>{".fldtool-files", "step_1", "step_1.vtm", "step_1/part_3_lower.vtu"}));
}

TEST_F(ConvertOutput, LeavesWhatItDidNotWrite) {
  const std::string file = write_series(3);
  const fs::path out = dataset.directory() / "out";
  fs::create_directories(out / "step_9");
  std::ofstream(out / "step_9/part_1_mine.vtu") << "mine";
  fs::create_directories(out / "step_1.tmp");
  std::ofstream(collection.string() + ".tmp") << "mine";
  convert(file, collection);
  std::ofstream(out / "step_1/mine.txt") << "mine";
  std::ofstream(out / "step_2/mine.txt") << "mine";
  convert(file, collection, {"--steps", "1", "--parts", "lower"});
  EXPECT_EQ(files_in(out), (std::set<std::string>{".fldtool-files", "step_1", "step_1.tmp", "step_1.vtm",
                                                  "step_1/mine.txt", "step_1/part_3_lower.vtu", "step_2",
                                                  "step_2/mine.txt", "step_9", "step_9/part_1_mine.vtu"}));
  EXPECT_TRUE(fs::exists(collection.string() + ".tmp"));
}

// A list that names other files is not believed.
TEST_F(ConvertOutput, RemovesOnlyFilesOfSteps) {
  const std::string file = write_series(2);
  const fs::path out = dataset.directory() / "out";
  fs::create_directories(out);
  std::ofstream(out / "keep.txt") << "mine";
  std::ofstream(out / ".fldtool-files") << "keep.txt\n../s_1.fld\nstep_1/../keep.txt\nstep_7.vtm\n";
  std::ofstream(out / "step_7.vtm") << "of an earlier run";
  convert(file, collection);
  EXPECT_TRUE(fs::exists(out / "keep.txt"));
  EXPECT_TRUE(fs::exists(dataset.directory() / "s_1.fld"));
  EXPECT_FALSE(fs::exists(out / "step_7.vtm"));
}

TEST_F(ConvertOutput, RejectsOutputsOfAnotherFormat) {
  expect_error({"convert", dataset.path(), "x.vtu"}, 2,
               "x.vtu: cannot write '.vtu' files: OUT is NAME.pvd, NAME.vtkhdf, or a folder (NAME/)");
  expect_error({"convert", dataset.path(), ""}, 2,
               "OUT: the file name is empty (see fldtool convert --help)");
  EXPECT_FALSE(fs::exists("x.vtu"));
  const fs::path folder = dataset.directory() / "run.1";
  const Result result = run_fldtool({"convert", dataset.path(), folder.string()});
  EXPECT_EQ(result.status, 0) << result.errors;
  EXPECT_TRUE(fs::exists(folder / "case.pvd"));
}

TEST_F(ConvertOutput, RejectsWrongChoices) {
  const std::string file = dataset.path();
  const std::string out = collection.string();
  expect_error({"convert", file}, 2, "OUT is required (see fldtool convert --help)");
  expect_error({"convert", file, out, "--steps", "1"}, 2,
               file + ": there is no step 1: the steps are 0 to 0");
  expect_error({"convert", file, out, "--steps", "1-"}, 2,
               file + ": there are no steps '1-': the steps are 0 to 0");
  expect_error({"convert", file, out, "--parts", "7"}, 2,
               file + ": there is no part '7': the parts are 1 to 5");
  expect_error({"convert", file, out, "--parts", "x*"}, 2,
               file + ": there is no part 'x*': the parts are 1 to 5");
  expect_error({"convert", file, out, "--variables", "q"}, 2,
               file + ": there is no variable 'q': the variables are 1 to 3");
  expect_error({"convert", file, out, "--precision", "half"}, 2,
               "--precision: 'half' is none of double, single (see fldtool convert --help)");
  expect_error({"convert", file, out, "--compress", "bz2"}, 2,
               "--compress: 'bz2' is none of lz4, zlib (see fldtool convert --help)");
  EXPECT_FALSE(fs::exists(collection));
}

TEST_F(ConvertOutput, SaysWhenItCannotWrite) {
  const std::string file = dataset.path();
  expect_error({"convert", file, file + "/out"}, 4, file + "/out/case: cannot write: Not a directory");
  fs::create_directories(collection / "occupied");
  expect_error({"convert", file, collection.string()}, 4,
               collection.string() + ": cannot write: Is a directory");
  const fs::path data = dataset.directory() / "data";
  fs::create_directories(data);
  fs::create_directories(data / "step_0.vtm/occupied");
  expect_error({"convert", file, data.string() + ".pvd"}, 4,
               (data / "step_0.vtm").string() + ": cannot write: Is a directory");
}

TEST_F(ConvertOutput, SaysWhenAFileIsFull) {
  // The child's files may not grow beyond a few bytes, and no signal tells it.
  const std::string command = "trap '' XFSZ; ulimit -f 0; exec " FLDTOOL " convert " + dataset.path() + " " +
                              collection.string() + " 2>&1 | cat";
  std::FILE* pipe = popen(command.c_str(), "r");
  ASSERT_NE(pipe, nullptr);
  char text[1000] = {};
  const std::size_t size = fread(text, 1, sizeof text - 1, pipe);
  pclose(pipe);
  const std::string said(text, size);
  EXPECT_TRUE(said.starts_with("fldtool: " + (dataset.directory() / "out/step_0/part_1_").string())) << said;
  EXPECT_TRUE(said.ends_with(": cannot write: the file is not complete\n")) << said;
  EXPECT_FALSE(fs::exists(collection));
}

TEST_F(ConvertOutput, TellsProgressOnATerminal) {
  const Result result = tool_test::run_fldtool_on_terminal({"convert", dataset.path(), collection.string()});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.output, collection.string() + "\n");
  // Two surfaces and two volumes of one step.
  EXPECT_EQ(result.errors.find("\r\x1b[Kparts: 0 of 4, 0 %"), 0U) << result.errors;
  EXPECT_TRUE(result.errors.ends_with("\r\x1b[K")) << result.errors;
}

TEST_F(ConvertOutput, SaysWhenItCannotTellTheName) {
  const Result result = run_fldtool({"convert", dataset.path(), collection.string()}, "/dev/full");
  EXPECT_EQ(result.status, 4);
  EXPECT_EQ(result.errors, "fldtool: standard output: cannot write: No space left on device\n");
  EXPECT_TRUE(fs::exists(collection));
}

TEST_F(ConvertOutput, RefusesWhatIsNoDataset) {
  const std::string empty = (dataset.directory() / "empty.fld").string();
  std::ofstream(empty).flush();
  expect_error({"convert", empty, collection.string()}, 3, empty + ": This is not FLD file.");
  EXPECT_FALSE(fs::exists(collection));
}

TEST_F(ConvertOutput, KeepsTheStepsBeforeABrokenOne) {
  // A quantity of the third file announces more values than it has.
  const std::string file = write_series(4);
  testkit::File broken = tool_test::one_of_each_file();
  broken.header.set_cycle(2, 2.0);
  broken.region_sets.front().section("LS_Scalar:p").blocks[1] = testkit::Block::integer(-5);
  testkit::write_file(broken, dataset.directory() / "s_2.fld");
  const Result result = run_fldtool({"convert", file, collection.string(), "--parts", "all"});
  EXPECT_EQ(result.status, 3);
  EXPECT_TRUE(result.errors.starts_with("fldtool: " + (dataset.directory() / "s_2.fld").string() + ": "))
      << result.errors;
  EXPECT_EQ(std::count(result.errors.begin(), result.errors.end(), '\n'), 1) << result.errors;
  host_test::Reader reader;
  reader.session().open(file);
  expect_steps(collection, reader.session(), {0, 1});
  EXPECT_EQ(files_in(dataset.directory() / "out").count("step_2"), 0U);
}

// Without the whole mesh.
constexpr std::size_t kTankParts = 19;

class InterruptedConvert : public testing::TestWithParam<int> {};

TEST_P(InterruptedConvert, LeavesTheStepsDone) {
  const testkit::TemporaryDirectory directory;
  const samples::SampleInfo sample = samples::tank::write(directory.path());
  const fs::path collection = directory / "out.pvd";
  const Result result = tool_test::run_fldtool_and_interrupt_when(
      {"convert", sample.file.string(), collection.string()}, [&](pid_t) { return fs::exists(collection); },
      GetParam());
  EXPECT_EQ(result.status, GetParam() == SIGKILL ? -1 : 130);
  if (GetParam() != SIGKILL) {
    for (const fs::directory_entry& entry : fs::directory_iterator(directory / "out"))
      EXPECT_FALSE(entry.path().filename().string().starts_with(".step")) << entry.path();
  }
  const std::vector<CollectionStep> steps = steps_of(collection);
  EXPECT_GE(steps.size(), 1U);
  EXPECT_LT(steps.size(), 8U);
  for (const CollectionStep& step : steps) EXPECT_EQ(Composite(step.file).size(), kTankParts);
}

INSTANTIATE_TEST_SUITE_P(Signals, InterruptedConvert, testing::Values(SIGINT, SIGTERM, SIGKILL));

}  // namespace
