// Whole sessions in which the 1st, 2nd, 3rd ... allocation, read, seek or open fails, once or from then on,
// until a session completes: each time the result is documented, nothing leaks, and the next opening works.
#include <array>
#include <functional>
#include <gtest/gtest.h>
#include <iostream>
#include <optional>
#include <string>

#include "testkit/file_writer.h"
#include "testkit/temporary_directory.h"
#include "tests/faults/armed_entry_points.h"
#include "tests/faults/documented.h"
#include "tests/faults/failing_files.h"
#include "tests/faults/fault_datasets.h"
#include "tests/faults/memory_meter.h"
#include "tests/faults/stderr_file.h"
#include "tests/faults/tally.h"
#include "tests/faults/whole_session.h"
#include "tests/support/failing_memory.h"

namespace faults {
namespace {

using Lasting = FaultPlan::Lasting;

// A dataset and the least number of requests of each kind in its session. Fewer mean that some of the
// reader's requests are no longer intercepted.
struct Dataset {
  const char* file;
  std::size_t memory;
  std::size_t reads;
  std::size_t positionings;
  std::size_t openings;
};
constexpr std::array<Dataset, 3> kDatasets = {{
    {.file = "whole.fld", .memory = 170, .reads = 125, .positionings = 25, .openings = 12},
    {.file = "case_0.fld", .memory = 135, .reads = 80, .positionings = 19, .openings = 12},
    {.file = "changing_0.fld", .memory = 65, .reads = 50, .positionings = 10, .openings = 6},
}};

class FailingRequests : public testing::TestWithParam<Lasting> {
 protected:
  FailingRequests() {
    testkit::write_file(every_construct(), directory_ / "whole.fld");
    testkit::write_file(base_of_series(), directory_ / "case_0.fld");
    testkit::write_file(motion_of_series(), directory_ / "case_1.fld");
    testkit::write_file(small_of_changing_series(), directory_ / "changing_0.fld");
    testkit::write_file(large_of_changing_series(), directory_ / "changing_1.fld");
  }

  using Judge = std::function<std::string(const CallEnding&)>;

  // Repeats the session with a later failing request each time, until none fails, which must take at least
  // `least` sessions. `judge` returns what is wrong with a call that was not served.
  template <class Failing, class... Arguments>
  void sweep(const char* dataset, std::size_t least, const Judge& judge, Arguments... arguments) {
    const std::filesystem::path path = directory_ / dataset;
    // Twice, to exclude one-time allocations.
    session(path);
    const Case clean = session(path);
    ASSERT_EQ(Outcome::kServed, clean.ending.outcome) << clean.ending.detail;
    Tally tally;
    for (int request = 1;; ++request) {
      const MemoryMeter meter;
      {
        std::optional<Failing> failing(std::in_place, arguments..., request, GetParam());
        Failing::plan().pause();
        const Case tried = session(path);
        if (!Failing::has_failed()) break;
        failing.reset();
        tally.add(tried.ending.outcome);
        for (const CallEnding& call : tried.ending.unserved) {
          EXPECT_EQ("", judge(call)) << "request " << request << "\n" << tried.diagnostics;
        }
        EXPECT_EQ(std::string::npos, tried.diagnostics.find("MEMORY LEAK DETECTED")) << "request " << request;
        const Case after = session(path);
        EXPECT_EQ(Outcome::kServed, after.ending.outcome)
            << "after request " << request << ": " << after.ending.detail;
        EXPECT_EQ(clean.ending.digest, after.ending.digest) << "after request " << request;
      }
      if (!HasFailure()) {
        EXPECT_EQ(0, meter.held()) << "memory is lost after request " << request;
      }
    }
    EXPECT_LE(least, tally.cases) << dataset;
    std::cout << dataset << ": " << tally.text() << '\n';
  }

 private:
  struct Case {
    Ending ending;
    std::string diagnostics;
  };
  static Case session(const std::filesystem::path& path) {
    StderrFile diagnostics;
    Ending ending = whole_session(armed_entry_points(), path, {.lines = &diagnostics});
    return {std::move(ending), diagnostics.take()};
  }

  testkit::TemporaryDirectory directory_;
};

const auto judge_as_documented = [](const CallEnding& call) { return undocumented(call); };

TEST_P(FailingRequests, Memory) {
  // Exhausted memory must not be reported as a damaged file.
  const auto judge = [](const CallEnding& call) -> std::string {
    if (call.outcome == Outcome::kOutOfMemory) return "";
    if (call.outcome == Outcome::kException && !call.detail.ends_with(": NOT ENOUGH MEMORY")) {
      return call.detail;
    }
    if (call.outcome == Outcome::kAssertion) return call.detail;
    return undocumented(call);
  };
  for (const Dataset& dataset : kDatasets) sweep<FailingMemory>(dataset.file, dataset.memory, judge);
}

TEST_P(FailingRequests, ReadErrors) {
  for (const Dataset& dataset : kDatasets)
    sweep<FailingFiles>(dataset.file, dataset.reads, judge_as_documented, FileFault::kReadError);
}

TEST_P(FailingRequests, EarlyEnds) {
  for (const Dataset& dataset : kDatasets)
    sweep<FailingFiles>(dataset.file, dataset.reads, judge_as_documented, FileFault::kEnd);
}

TEST_P(FailingRequests, ShortReadsChangeNothing) {
  const auto judge = [](const CallEnding& call) { return call.detail; };
  for (const Dataset& dataset : kDatasets)
    sweep<FailingFiles>(dataset.file, dataset.reads, judge, FileFault::kShortRead);
}

TEST_P(FailingRequests, SeekErrors) {
  for (const Dataset& dataset : kDatasets)
    sweep<FailingFiles>(dataset.file, dataset.positionings, judge_as_documented, FileFault::kSeekError);
}

TEST_P(FailingRequests, OpenErrors) {
  for (const Dataset& dataset : kDatasets)
    sweep<FailingFiles>(dataset.file, dataset.openings, judge_as_documented, FileFault::kOpenError);
}

INSTANTIATE_TEST_SUITE_P(All, FailingRequests, testing::Values(Lasting::kOnce, Lasting::kForEver),
                         [](const auto& info) { return info.param == Lasting::kOnce ? "Once" : "ForEver"; });

}  // namespace
}  // namespace faults
