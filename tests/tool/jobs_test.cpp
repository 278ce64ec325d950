// --jobs: several steps or files at once, with the output of one after the other.
#include "tool/jobs.h"

#include <algorithm>
#include <csignal>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <map>
#include <stdexcept>
#include <string>
#include <unistd.h>
#include <vector>

#include "nlohmann/json.hpp"
#include "testkit/box_dataset.h"
#include "testkit/file_writer.h"
#include "testkit/temporary_directory.h"
#include "tests/tool/run_fldtool.h"
#include "tests/tool/tool_datasets.h"
#include "tool/exit_status.h"

namespace {

namespace fs = std::filesystem;
using tool_test::Result;
using tool_test::run_fldtool;
using Words = std::vector<std::string>;

constexpr int kSteps = 5;

TEST(UsableJobs, AreAsManyAsWantedUpToThePiecesAndTheMemory) {
  EXPECT_EQ(tool::usable_jobs(4, 10, 1), 4);
  EXPECT_EQ(tool::usable_jobs(4, 2, 1), 2);
  EXPECT_EQ(tool::usable_jobs(4, 0, 1), 1);
  EXPECT_EQ(tool::usable_jobs(4, 10, std::uint64_t{1} << 60), 1);
  EXPECT_GE(tool::usable_jobs(0, 1000, 1), 1);
}

// The results in the order in which they are taken.
std::vector<int> taken(int jobs, std::size_t pieces, std::size_t stop_after = 1000) {
  std::vector<int> results;
  tool::run_jobs(
      jobs, pieces, [](std::size_t i) { return tool::Json(10 * i); },
      [&](std::size_t i, const tool::Json& result) {
        EXPECT_EQ(i, results.size());
        results.push_back(result.get<int>());
        return results.size() < stop_after;
      });
  return results;
}

TEST(RunJobs, TakesResultsInOrder) {
  for (const int jobs : {1, 2, 3, 7}) {
    EXPECT_EQ(taken(jobs, 7), (std::vector{0, 10, 20, 30, 40, 50, 60})) << jobs;
    EXPECT_EQ(taken(jobs, 7, 2), (std::vector{0, 10})) << jobs;
    EXPECT_EQ(taken(jobs, 0), std::vector<int>()) << jobs;
  }
}

TEST(RunJobs, WorksInSeveralProcesses) {
  std::vector<int> processes;
  tool::run_jobs(
      3, 6, [](std::size_t) { return tool::Json(getpid()); },
      [&](std::size_t, const tool::Json& process) {
        processes.push_back(process.get<int>());
        return true;
      });
  ASSERT_EQ(processes.size(), 6U);
  EXPECT_TRUE(std::equal(processes.begin(), processes.begin() + 3, processes.begin() + 3));
  std::sort(processes.begin(), processes.end());
  EXPECT_EQ(std::unique(processes.begin(), processes.end()) - processes.begin(), 3);
  EXPECT_EQ(std::count(processes.begin(), processes.end(), getpid()), 0);
}

TEST(RunJobs, BytesComeBackAsTheyWere) {
  const std::string bytes("\x89PNG\0\xff", 6);
  EXPECT_EQ(tool::text_of(tool::Json::from_cbor(tool::Json::to_cbor(tool::as_bytes(bytes)))), bytes);
}

// The message of what is thrown at the third of five pieces, and how many results were taken before.
std::string thrown(int jobs, void (*at_third)(), std::size_t* before, tool::ExitStatus* status) {
  try {
    tool::run_jobs(
        jobs, kSteps,
        [&](std::size_t i) {
          if (i == 2) at_third();
          return tool::Json(i);
        },
        [&](std::size_t, const tool::Json&) { return ++*before > 0; });
  } catch (const tool::CommandError& error) {
    *status = error.status();
    return error.what();
  }
  return "nothing was thrown";
}

TEST(RunJobs, ThrowsWhatTheWorkThrows) {
  const auto fail = [] { throw tool::CommandError(tool::ExitStatus::unreadable, "x.fld", "broken"); };
  for (const int jobs : {1, 2, 5}) {
    std::size_t before = 0;
    tool::ExitStatus status = tool::ExitStatus::ok;
    EXPECT_EQ(thrown(jobs, fail, &before, &status), "x.fld: broken") << jobs;
    EXPECT_EQ(status, tool::ExitStatus::unreadable) << jobs;
    EXPECT_EQ(before, 2U) << jobs;
  }
}

TEST(RunJobs, TellsHowAJobEnded) {
  std::size_t before = 0;
  tool::ExitStatus status = tool::ExitStatus::ok;
  EXPECT_EQ(thrown(
                2, [] { raise(SIGKILL); }, &before, &status),
            "a job was ended by signal 9 (Killed)");
  EXPECT_EQ(status, tool::ExitStatus::failure);
  EXPECT_EQ(before, 2U);
  before = 0;
  EXPECT_EQ(thrown(
                2, [] { _exit(7); }, &before, &status),
            "a job ended with status 7");
}

// A series of five steps; a later one may lack a part, or be cut off.
class Jobs : public testing::Test {
 protected:
  Jobs() {
    for (int step = 0; step < kSteps; ++step) {
      testkit::File file = tool_test::one_of_each_file();
      if (step == 3) tool_test::remove_lower(file);
      file.header.set_cycle(step, step);
      testkit::write_file(file, path(step));
    }
  }

  fs::path path(int step) const { return directory_ / ("s_" + std::to_string(step) + ".fld"); }
  fs::path output() const { return directory_ / "out"; }
  // The step opens, but its mesh cannot be read.
  void break_mesh(int step) const {
    testkit::File file = tool_test::one_of_each_file();
    file.header.set_cycle(step, step);
    file.region_sets.front().section("LS_Elements").blocks[0] = testkit::Block::integer(-5);
    testkit::write_file(file, path(step));
  }

  // The same whatever the number of jobs; returns the result with one.
  Result expect_same(Words words) const {
    words.insert(words.end(), {"--jobs", "1"});
    const Result one = run_fldtool(words);
    for (const char* jobs : {"2", "3", "8"}) {
      words.back() = jobs;
      const Result several = run_fldtool(words);
      EXPECT_EQ(several.status, one.status) << jobs;
      EXPECT_EQ(several.output, one.output) << jobs;
      EXPECT_EQ(several.errors, one.errors) << jobs;
    }
    return one;
  }

  // The files below the output folder, by name, after a run with so many jobs.
  std::map<std::string, std::string> written(Words words, const char* jobs, int expected_status = 0) const {
    fs::remove_all(output());
    words.insert(words.end(), {"--jobs", jobs});
    EXPECT_EQ(run_fldtool(words).status, expected_status) << jobs;
    std::map<std::string, std::string> files;
    for (const auto& entry : fs::recursive_directory_iterator(output())) {
      if (!entry.is_regular_file()) continue;
      std::ifstream file(entry.path(), std::ios::binary);
      files[entry.path().lexically_relative(output()).string()] = {std::istreambuf_iterator<char>(file), {}};
    }
    return files;
  }

 private:
  testkit::TemporaryDirectory directory_;
};

TEST_F(Jobs, StatsAreTheSame) {
  for (const Words& form : {Words{}, {"--json"}, {"--csv"}}) {
    Words words = {"stats", path(0).string(), "--parts", "lower,3"};
    words.insert(words.end(), form.begin(), form.end());
    const Result result = expect_same(words);
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.errors, "fldtool: " + path(0).string() + ": step 3 does not have: volume lower\n");
    EXPECT_FALSE(result.output.empty());
  }
}

TEST_F(Jobs, StatsAroundAMeshThatCannotBeReadAreTheSame) {
  break_mesh(2);
  const Result result = expect_same({"stats", path(0).string(), "--json"});
  EXPECT_EQ(result.status, 3);
  EXPECT_NE(result.output.find("\"step\": 4"), std::string::npos) << result.output;
}

TEST_F(Jobs, ChecksAreTheSame) {
  fs::resize_file(path(1), 600);
  for (const Words& form : {Words{}, {"--json"}}) {
    Words words = {"check", "--full", path(0).string()};
    words.insert(words.end(), form.begin(), form.end());
    EXPECT_EQ(expect_same(words).status, 1);
  }
}

TEST_F(Jobs, DifferencesAreTheSame) {
  testkit::TemporaryDirectory other;
  for (int step = 0; step < kSteps; ++step) {
    testkit::File file = tool_test::one_of_each_file();
    if (step == 1) tool_test::remove_lower(file);
    file.header.set_cycle(step, step + (step == 4 ? 1 : 0));
    testkit::write_file(file, other / ("s_" + std::to_string(step) + ".fld"));
  }
  for (const Words& form : {Words{}, {"--json"}}) {
    Words words = {"diff", path(0).string(), (other / "s_0.fld").string()};
    words.insert(words.end(), form.begin(), form.end());
    EXPECT_EQ(expect_same(words).status, 1);
  }
}

#ifdef FLDTOOL_HAS_VTK
TEST_F(Jobs, ConvertedFilesAreTheSame) {
  const Words words = {"convert", path(0).string(), (output() / "x.pvd").string()};
  const auto one = written(words, "1");
  EXPECT_TRUE(one.contains("x.pvd"));
  EXPECT_TRUE(one.contains("x/step_4.vtm"));
  for (const char* jobs : {"2", "3"}) EXPECT_EQ(written(words, jobs), one) << jobs;
}

TEST_F(Jobs, ConvertKeepsTheStepsBeforeAnError) {
  break_mesh(2);
  const Words words = {"convert", path(0).string(), (output() / "x.pvd").string()};
  const auto one = written(words, "1", 3);
  EXPECT_TRUE(one.contains("x/step_1.vtm"));
  EXPECT_FALSE(one.contains("x/step_2.vtm"));
  for (const char* jobs : {"2", "3"}) EXPECT_EQ(written(words, jobs, 3), one) << jobs;
  expect_same(words);
}

TEST_F(Jobs, PicturesAreTheSame) {
  fs::create_directories(output());
  const Words words = {"render", path(0).string(), "-o",     (output() / "x.png").string(), "--steps",
                       "all",    "--size",         "200x200"};
  if (run_fldtool(words).status == 4) GTEST_SKIP() << "this machine cannot render";
  const auto draw = [&](const char* jobs) {
    Words with_jobs = words;
    with_jobs.insert(with_jobs.end(), {"--jobs", jobs});
    EXPECT_EQ(run_fldtool(with_jobs).status, 0);
    std::map<std::string, std::string> pictures;
    for (const auto& entry : fs::directory_iterator(output())) {
      std::ifstream file(entry.path(), std::ios::binary);
      pictures[entry.path().filename().string()] = {std::istreambuf_iterator<char>(file), {}};
    }
    return pictures;
  };
  const auto one = draw("1");
  EXPECT_EQ(one.size(), 5U);
  EXPECT_EQ(draw("2"), one);
}

TEST_F(Jobs, AllStopWhenTheyAreInterrupted) {
  testkit::TemporaryDirectory large;
  for (int step = 0; step < kSteps; ++step) {
    testkit::File file = testkit::box_file({.nx = 60, .ny = 60, .nz = 60});
    file.header.set_cycle(step, step);
    testkit::write_file(file, large / ("s_" + std::to_string(step) + ".fld"));
  }
  const Result result = tool_test::run_fldtool_on_terminal_and_interrupt(
      {"convert", (large / "s_0.fld").string(), output().string() + "/", "--parts", "all", "--jobs", "2"},
      SIGINT);
  EXPECT_EQ(result.status, 130);
  EXPECT_TRUE(result.errors.ends_with("fldtool: interrupted\r\n")) << result.errors;
  for (const auto& entry : fs::recursive_directory_iterator(output()))
    EXPECT_EQ(entry.path().filename().string().find(".steps."), std::string::npos) << entry.path();
}
#endif

TEST_F(Jobs, AreAtLeastOne) {
  for (const char* jobs : {"0", "-1", "many"}) {
    const Result result = run_fldtool({"stats", path(0).string(), "--jobs", jobs});
    EXPECT_EQ(result.status, 2) << jobs;
    EXPECT_EQ(result.errors.find("fldtool: --jobs: "), 0U) << result.errors;
  }
}

}  // namespace
