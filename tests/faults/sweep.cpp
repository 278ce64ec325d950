#include "tests/faults/sweep.h"

#include <ctime>
#include <gtest/gtest.h>
#include <stdexcept>
#include <unistd.h>
#include <utility>

#include "testkit/byte_sink.h"
#include "testkit/file_writer.h"
#include "tests/faults/documented.h"
#include "tests/faults/fault_datasets.h"
#include "tests/faults/memory_meter.h"
#include "tests/faults/open_descriptors.h"
#include "tests/faults/stderr_file.h"

namespace faults {
namespace {

// CPU time, so that the load of the machine does not matter.
constexpr std::clock_t kTimeLimit = CLOCKS_PER_SEC;
constexpr std::ptrdiff_t kMemoryFloor = std::ptrdiff_t{16} << 20;
constexpr std::ptrdiff_t kMemoryPerByte = 8;

// Ends the process if a case hangs; the test runner then shows which one.
class Watchdog {
 public:
  Watchdog() { set(20); }
  ~Watchdog() { set(0); }
  Watchdog(const Watchdog&) = delete;
  Watchdog& operator=(const Watchdog&) = delete;

 private:
  static void set(unsigned seconds) { alarm(seconds); }
};

}  // namespace

Sweep::Sweep() : library_(FLD_THROWING_PLUGIN_FILE), good_(directory_ / "good.fld") {
  testkit::write_file(good_file(), good_);
  const StderrFile silence;
  const Ending ending = whole_session(library_.entry_points(), good_);
  if (ending.outcome != Outcome::kServed || !ending.is_open)
    throw std::runtime_error("the good dataset is none");
  good_digest_ = ending.digest;
}

// Also checks what the two sessions leave behind: nothing, because the session in the constructor made the
// one-time allocations.
Sweep::Case Sweep::try_file(const std::filesystem::path& path, std::size_t size,
                            const SessionOptions& options) {
  const std::ptrdiff_t descriptors = open_descriptors();
  const MemoryMeter meter;
  Case tried = judge_sessions(path, size, options);
  // A complaint takes memory too.
  if (tried.complaint.empty() && meter.held() != 0)
    tried.complaint = std::to_string(meter.held()) + " bytes of memory are lost";
  const std::ptrdiff_t lost_descriptors = open_descriptors() - descriptors;
  if (lost_descriptors != 0) tried.complaint += " file descriptors lost: " + std::to_string(lost_descriptors);
  return tried;
}

Sweep::Case Sweep::judge_sessions(const std::filesystem::path& path, std::size_t size,
                                  const SessionOptions& options) {
  StderrFile diagnostics;
  const Watchdog watchdog;
  const MemoryMeter meter;
  const std::clock_t start = std::clock();
  SessionOptions with_lines = options;
  with_lines.lines = &diagnostics;
  const Ending ending = whole_session(library_.entry_points(), path, with_lines);
  const std::clock_t time = std::clock() - start;
  const std::ptrdiff_t memory = meter.peak();
  std::string complaint = undocumented(ending);
  if (time > kTimeLimit) complaint += " took over a second";
  if (memory > kMemoryFloor + kMemoryPerByte * static_cast<std::ptrdiff_t>(size)) {
    complaint.append(" took ").append(std::to_string(memory)).append(" bytes of memory");
  }
  const Ending after = whole_session(library_.entry_points(), good_);
  if (after.outcome != Outcome::kServed || after.digest != good_digest_) {
    complaint += " the good dataset is not served as ever afterwards: " + after.detail;
  }
  if (diagnostics.take().find("MEMORY LEAK DETECTED") != std::string::npos)
    complaint += " the reader reports a leak";
  return {.outcome = ending.outcome, .complaint = std::move(complaint)};
}

Tally Sweep::run(const Damages& damages, std::string_view name, std::size_t stride, SessionOptions options) {
  Tally tally;
  const std::filesystem::path path = in(name);
  for (std::size_t number = 0; number < damages.count(); number += stride) {
    const std::string bytes = damages.damaged(number);
    testkit::write_bytes(path, bytes);
    options.ends = number % 2 == 0;
    const Case tried = try_file(path, bytes.size(), options);
    tally.add(tried.outcome);
    EXPECT_EQ("", tried.complaint) << damages.describe(number);
  }
  return tally;
}

}  // namespace faults
