// What integrate, probe, history, mean and extract have in common: Ctrl-C, broken files, odd arguments,
// outputs that cannot be written.
#include "gtest/gtest.h"
#include <algorithm>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <set>
#include <string>
#include <vector>

#include "testkit/box_dataset.h"
#include "testkit/file_writer.h"
#include "testkit/temporary_directory.h"
#include "tests/tool/run_fldtool.h"
#include "tests/tool/terminal.h"
#include "tests/tool/tool_datasets.h"

namespace {

namespace fs = std::filesystem;
using tool_test::Result;
using tool_test::run_fldtool;
using Words = std::vector<std::string>;

class AnalysisCommands : public testing::Test {
 protected:
  std::string in(const std::string& name) const { return (directory / name).string(); }

  // Each of the commands on a dataset; what they write into files goes to the folder "out".
  std::vector<Words> commands(const std::string& file) const {
    fs::create_directories(directory / "out");
    const std::string collection = in("out/c.pvd");
    return {{"integrate", file},
            {"integrate", file, "--json"},
            {"probe", file, "--at", "0.5,0.5,0.5"},
            {"probe", file, "--line", "0,0,0:1,1,1", "-o", in("out/p.npy")},
            {"history", file, "--at", "0.5,0.5,0.5", "-o", in("out/h.csv")},
            {"history", file, "--stats", "mean", "--integrate", "flow", "--parts", "all"},
            {"mean", file, collection},
            {"extract", file, collection, "--box", "0,0,0:9,9,9"}};
  }

  // The files in the folder "out".
  std::set<std::string> written() const {
    std::set<std::string> names;
    for (const auto& entry : fs::recursive_directory_iterator(directory / "out")) {
      if (!entry.is_directory()) names.insert(entry.path().lexically_relative(directory / "out").string());
    }
    return names;
  }

  std::string write_bytes(const std::string& name, const std::string& bytes) const {
    std::ofstream(directory / name, std::ios::binary) << bytes;
    return in(name);
  }

  // box_0.fld and so on, cubes of one size; the mesh of each has one more layer of elements than that before.
  std::string write_growing_meshes(int steps) const {
    for (int step = 0; step < steps; ++step) {
      testkit::write_file(
          testkit::box_file({.nx = 2 + step, .ny = 2, .nz = 2, .cycle = step, .time = 1.0 * step}),
          directory / ("box_" + std::to_string(step) + ".fld"));
    }
    return in("box_0.fld");
  }

  testkit::TemporaryDirectory directory;
};

TEST_F(AnalysisCommands, StopWhenTheyAreInterrupted) {
  const std::string file = in("box.fld");
  testkit::write_file(testkit::box_file({.nx = 60, .ny = 60, .nz = 60}), file);
  for (const Words& words : commands(file)) {
    const Result result = tool_test::run_fldtool_on_terminal_and_interrupt(words, SIGINT);
    EXPECT_EQ(result.status, 130) << words.front();
    EXPECT_TRUE(result.errors.ends_with(tool_test::kErase + std::string("fldtool: interrupted\r\n")))
        << words.front() << result.errors;
    EXPECT_EQ(written(), std::set<std::string>{}) << words.front();
  }
}

TEST_F(AnalysisCommands, SayWhatCannotBeRead) {
  const std::string missing = in("none.fld");
  for (const Words& words : commands(missing))
    tool_test::expect_error(words, 3, missing + ": FILE NOT FOUND : " + missing);
  const std::string text =
      write_bytes("text.fld", "These are not the bytes of a result file, but enough of them.");
  for (const Words& words : commands(text))
    tool_test::expect_error(words, 3, text + ": This is not FLD file.");
  EXPECT_EQ(written(), std::set<std::string>{});
}

TEST_F(AnalysisCommands, SayWhereAFileBreaksOff) {
  const std::string whole = testkit::to_bytes(tool_test::one_of_each_file());
  for (std::size_t size = 301; size < whole.size(); size += 499) {
    const std::string file = write_bytes("cut.fld", whole.substr(0, size));
    for (const Words& words : commands(file)) {
      const Result result = run_fldtool(words);
      EXPECT_EQ(result.status, 3) << words.front() << " after " << size << " bytes";
      EXPECT_TRUE(result.errors.starts_with("fldtool: " + file + ": ")) << words.front() << result.errors;
      EXPECT_EQ(std::count(result.errors.begin(), result.errors.end(), '\n'), 1) << result.errors;
      EXPECT_EQ(result.output, "");
    }
    EXPECT_EQ(written(), std::set<std::string>{}) << size;
  }
}

// Of the three files of the series the second one is broken, or not there.
TEST_F(AnalysisCommands, GoOnWithoutAStepThatIsBroken) {
  const std::string file = tool_test::write_series_with_a_broken_step(directory.path());
  const std::string line = "fldtool: " + in("case_2.fld") + ": step 1: ";
  for (const Words& words : commands(file)) {
    const Result result = run_fldtool(words);
    EXPECT_EQ(result.status, 3) << words.front();
    EXPECT_TRUE(result.errors.starts_with(line)) << words.front() << result.errors;
    EXPECT_EQ(std::count(result.errors.begin(), result.errors.end(), '\n'), 1) << result.errors;
  }
  // A mean needs all steps; a series has those before. Nothing is left that is not finished.
  const std::set<std::string> found = written();
  EXPECT_TRUE(found.contains("c.pvd"));
  EXPECT_TRUE(found.contains("c/step_0.vtm"));
  EXPECT_FALSE(found.contains("c/step_1.vtm"));
  const auto is_unfinished = [](const std::string& name) { return name.find(".steps") != std::string::npos; };
  EXPECT_TRUE(std::none_of(found.begin(), found.end(), is_unfinished));
}

TEST_F(AnalysisCommands, HaveTheStepsOfTheFilesThatAreThere) {
  const std::string file = write_growing_meshes(3);
  fs::remove(directory / "box_1.fld");
  const Result history = run_fldtool({"history", file, "--at", "0.5,0.5,0.25", "--variable", "scalar_1"});
  EXPECT_EQ(history.status, 0) << history.errors;
  EXPECT_EQ(history.output,
            "step,time,scalar_1 at (0.5 0.5 0.25)\n"
            "0,0,31.5625\n"
            "1,2,31.5625\n");
}

// scalar_1 is 1 + x + 10 y + 100 z + x y z whatever the mesh.
TEST_F(AnalysisCommands, FollowAMeshThatChanges) {
  const std::string file = write_growing_meshes(2);
  const Result probe = run_fldtool({"probe", file, "--at", "0.5,0.5,0.25", "--variable", "scalar_1"});
  EXPECT_EQ(probe.status, 0) << probe.errors;
  EXPECT_EQ(probe.output,
            "step,time,point,x,y,z,found,region_set,element,scalar_1\n"
            "0,0,1,0.5,0.5,0.25,inside,0,1,31.5625\n"
            "1,1,1,0.5,0.5,0.25,inside,0,2,31.5625\n");
  const Result areas = run_fldtool({"history", file, "--integrate", "measure", "-p", "z_high"});
  EXPECT_EQ(areas.status, 0) << areas.errors;
  EXPECT_EQ(areas.output, "step,time,measure of z_high\n0,0,1\n1,1,1\n");
  const Result extracted =
      run_fldtool({"extract", file, in("e.pvd"), "--box", "0,0,0:1,1,1", "--parts", "volumes"});
  EXPECT_EQ(extracted.status, 0) << extracted.errors;
  tool_test::expect_error(
      {"mean", file, in("m.pvd"), "--parts", "volume_1,x_low"}, 4,
      file +
          ": step 1: a mean needs parts at rest or moved rigidly: volume_1 has other nodes or "
          "elements; choose the others with --parts 1");
  EXPECT_FALSE(fs::exists(directory / "m.pvd"));
  EXPECT_FALSE(fs::exists(directory / "m"));
}

class OddArguments : public AnalysisCommands {
 protected:
  OddArguments() { testkit::write_file(testkit::box_file({.nx = 2, .ny = 2, .nz = 2}), file); }

  void expect(Words words, int status, const std::string& line) const {
    words.insert(words.begin() + 1, file);
    tool_test::expect_error(words, status, line);
  }

  const std::string file = in("box.fld");
};

TEST_F(OddArguments, NumbersAndPoints) {
  for (const std::string point :
       {"", "nan,0,0", "0,inf,0", "0,0,1e400", "0,0", "0,0,0,0", "a,b,c", "0 0 0", ",,"}) {
    const std::string line = "'" + point + "' is not a point: write X,Y,Z";
    expect({"probe", "--at", point}, 2, "--at: " + line);
    expect({"history", "--at", point}, 2, "--at: " + line);
    expect({"integrate", "--about", point}, 2, "--about: " + line);
  }
  for (const std::string points : {"0,0,0", "0,0,0:1,1", "0,0,0:1,1,nan", ":", "0,0,0:1,1,1:2,2,2"}) {
    const std::string line = "'" + points + "' is not two points: write X,Y,Z:X,Y,Z";
    expect({"probe", "--line", points}, 2, "--line: " + line);
    expect({"extract", in("e.pvd"), "--box", points}, 2, "--box: " + line);
  }
  for (const std::string number : {"0", "1", "-5", "10000001", "18446744073709551617", "x", ""}) {
    expect({"probe", "--line", "0,0,0:1,0,0", "--points", number}, 2,
           "--points: '" + number + "' is not a number from 2 to 10000000 (see fldtool probe --help)");
  }
  expect({"probe", "--points", "5"}, 2, "--points requires --line (see fldtool probe --help)");
  for (const std::string number : {"nan", "inf", "1e400", "1 bar"}) {
    expect({"integrate", "--reference-pressure", number}, 2,
           "--reference-pressure: '" + number + "' is not a number");
  }
}

TEST_F(OddArguments, EmptyTexts) {
  expect({"probe", "--line", ""}, 2, "--line: the value is empty (see fldtool probe --help)");
  expect({"extract", in("e.pvd"), "--box", ""}, 2, "--box: the value is empty (see fldtool extract --help)");
  expect({"integrate", "--pressure", ""}, 2, "--pressure: the value is empty (see fldtool integrate --help)");
  expect({"integrate", "--reference-pressure", ""}, 2,
         "--reference-pressure: the value is empty (see fldtool integrate --help)");
  expect({"history", "--stats", ""}, 2,
         "--stats: '' is none of minimum, maximum, mean, deviation, undefined");
  expect({"probe", "--at-file", ""}, 2, "--at-file: the file name is empty (see fldtool probe --help)");
  expect({"mean", ""}, 2, "OUT: the file name is empty (see fldtool mean --help)");
  expect({"mean", in("m.pvd"), "--steps", ""}, 2,
         "--step: '' is not a step: write 4, 2-5, 6-, 0-100:10 or last (see fldtool mean --help)");
}

TEST_F(OddArguments, Names) {
  for (const std::string name : {"", "\"", "'", "ü", "圧力", "a\"b", "grad()", "mag", "scalar_1.x"}) {
    const std::string line = file + ": there is no variable '" + name + "': the variables are 1 to 4";
    for (const Words& words :
         {Words{"probe", "--at", "0,0,0"}, Words{"history", "--at", "0,0,0"}, Words{"integrate"},
          Words{"mean", in("m.pvd")}, Words{"extract", in("e.pvd")}}) {
      Words all = words;
      all.insert(all.end(), {"--variable", name});
      all.insert(all.begin() + 1, file);
      const Result result = run_fldtool(all);
      EXPECT_EQ(result.status, 2) << name;
      // A name that is near another one is followed by a hint.
      EXPECT_TRUE(result.errors.starts_with("fldtool: " + line)) << result.errors;
      EXPECT_EQ(std::count(result.errors.begin(), result.errors.end(), '\n'), 1) << result.errors;
    }
    EXPECT_FALSE(fs::exists(directory / "m.pvd"));
    EXPECT_FALSE(fs::exists(directory / "e.pvd"));
  }
  expect({"integrate", "-p", "a\"b"}, 2, file + ": there is no part 'a\"b': the parts are 1 to 8");
  expect({"probe", "--at", "0,0,0", "--variable", "scalar_1,ü"}, 2,
         file + ": there is no variable 'ü': the variables are 1 to 4");
}

TEST_F(OddArguments, OutputsThatCannotBeWritten) {
  fs::create_directory(directory / "folder.csv");
  fs::create_directory(directory / "folder.pvd");
  write_bytes("file", "");
  const std::string folder = in("folder.csv");
  const std::string nowhere = in("none/a.csv");
  for (const std::string command : {"probe", "history"}) {
    expect({command, "--at", "0.5,0.5,0.5", "-o", folder}, 4, folder + ": cannot write: Is a directory");
    expect({command, "--at", "0.5,0.5,0.5", "-o", nowhere}, 4,
           nowhere + ": cannot write: No such file or directory");
    expect({command, "--at", "0.5,0.5,0.5", "-o", "/dev/full"}, 4,
           "/dev/full: cannot write: No space left on device");
  }
  for (Words words : {Words{"mean"}, Words{"extract", "--box", "0,0,0:1,1,1"}}) {
    const auto expect_at = [&](const std::string& path, const std::string& line) {
      Words all = words;
      all.insert(all.begin() + 1, path);
      expect(all, 4, line);
    };
    expect_at(in("folder.pvd"), in("folder.pvd") + ": cannot write: Is a directory");
    expect_at(in("file/m.pvd"), in("file/m") + ": cannot write: Not a directory");
  }
  EXPECT_FALSE(fs::exists(directory / "folder"));
  EXPECT_TRUE(fs::is_empty(directory / "folder.pvd"));
}

TEST_F(OddArguments, StandardOutputIsFull) {
  for (const Words& words :
       {Words{"probe", file, "--at", "0.5,0.5,0.5"}, Words{"probe", file, "--at", "0,0,0", "--json"},
        Words{"history", file, "--at", "0.5,0.5,0.5"}, Words{"integrate", file},
        Words{"integrate", file, "--json"}, Words{"integrate", file, "--csv"}}) {
    const Result result = run_fldtool(words, "/dev/full");
    EXPECT_EQ(result.status, 4) << words.front();
    EXPECT_EQ(result.errors, "fldtool: standard output: cannot write: No space left on device\n");
  }
}

}  // namespace
