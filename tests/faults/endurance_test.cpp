// Ten thousand sessions over valid and broken datasets in one process: nothing grows.
#include <algorithm>
#include <array>
#include <chrono>
#include <fstream>
#include <gtest/gtest.h>
#include <vector>

#include "host/library.h"
#include "testkit/file_writer.h"
#include "testkit/temporary_directory.h"
#include "tests/faults/fault_datasets.h"
#include "tests/faults/memory_meter.h"
#include "tests/faults/open_descriptors.h"
#include "tests/faults/stderr_file.h"
#include "tests/faults/whole_session.h"

namespace faults {
namespace {

using Clock = std::chrono::steady_clock;

constexpr int kRounds = 2500;   // of four sessions each
constexpr int kWarmUp = 25;     // rounds: the first hundred sessions
constexpr int kCompared = 500;  // rounds whose times are compared

Clock::duration median(std::vector<Clock::duration> times) {
  const auto middle = times.begin() + static_cast<std::ptrdiff_t>(times.size() / 2);
  std::nth_element(times.begin(), middle, times.end());
  return *middle;
}

class Endurance : public testing::Test {
 protected:
  Endurance() {
    testkit::write_file(every_construct(), directory_ / "whole.fld");
    testkit::write_file(base_of_series(), directory_ / "case_0.fld");
    testkit::write_file(motion_of_series(), directory_ / "case_1.fld");
    const std::string bytes = testkit::to_bytes(every_construct());
    std::ofstream(directory_ / "half.fld", std::ios::binary) << bytes.substr(0, bytes.size() / 2);
    std::ofstream(directory_ / "text.fld") << "This is a text.\n";
  }

  Ending session(const char* file) { return whole_session(library_.entry_points(), directory_ / file); }

  // A session over each dataset: valid, truncated, a series with a motion, not an FLD file.
  void round() {
    static constexpr std::array<const char*, 4> kFiles = {"whole.fld", "half.fld", "case_1.fld", "text.fld"};
    static constexpr std::array<Outcome, 4> kOutcomes = {Outcome::kServed, Outcome::kException,
                                                         Outcome::kServed, Outcome::kFailed};
    for (std::size_t i = 0; i < kFiles.size(); ++i) {
      const Ending ending = session(kFiles.at(i));
      ASSERT_EQ(kOutcomes.at(i), ending.outcome) << kFiles.at(i) << ": " << ending.detail;
    }
  }

  testkit::TemporaryDirectory directory_;

 private:
  host::Library library_{FLD_THROWING_PLUGIN_FILE};
};

TEST_F(Endurance, TenThousandSessionsLeaveNothingBehind) {
  StderrFile diagnostics;
  std::vector<Clock::duration> times;
  times.reserve(kRounds);
  for (int i = 0; i < kWarmUp; ++i) {
    round();
    diagnostics.take();
  }
  const std::ptrdiff_t descriptors = open_descriptors();
  const MemoryMeter meter;
  for (int i = kWarmUp; i < kRounds; ++i) {
    const auto start = Clock::now();
    round();
    times.push_back(Clock::now() - start);
    diagnostics.take();
  }
  EXPECT_EQ(0, meter.held());
  EXPECT_EQ(descriptors, open_descriptors());
  // If time grew with the number of sessions, the last ones would be many times slower; noise does not double
  // a median.
  EXPECT_LT(median({times.end() - kCompared, times.end()}),
            3 * median({times.begin(), times.begin() + kCompared}));
}

TEST_F(Endurance, TheNamesOfTheLastQuantitiesAreReleased) {
  testkit::File file = good_file();
  for (testkit::RegionSet& set : file.region_sets) {
    set.add(testkit::scalar_section({.name = "scalar with 22 letters", .label = "s", .values = {1.0}}));
    set.add(testkit::vector_section(
        {.name = "vector with 22 letters", .label = "v", .x = {1.0}, .y = {2.0}, .z = {3.0}}));
  }
  testkit::write_file(file, directory_ / "names.fld");
  StderrFile diagnostics;
  session("whole.fld");
  const MemoryMeter meter;
  ASSERT_EQ(Outcome::kServed, session("names.fld").outcome);
  EXPECT_EQ(0, meter.held());
}

}  // namespace
}  // namespace faults
