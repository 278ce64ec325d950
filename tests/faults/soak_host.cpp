#include "tests/faults/soak_host.h"

#include <fstream>
#include <random>
#include <string>
#include <sys/time.h>
#include <unistd.h>

#include "host/library.h"
#include "testkit/file_writer.h"
#include "testkit/temporary_directory.h"
#include "tests/faults/documented.h"
#include "tests/faults/fault_datasets.h"
#include "tests/faults/memory_meter.h"
#include "tests/faults/open_descriptors.h"
#include "tests/faults/soak_files.h"
#include "tests/faults/stderr_file.h"

namespace faults {
namespace {

constexpr int kWarmUp = 200;  // sessions
constexpr int kBetweenGood = 50;
constexpr int kMostSeconds = 20;  // of processor time for a session

// Ends the process if a session takes too long. Time in which the process is stopped does not count.
void set_watchdog(int seconds) {
  const itimerval timer = {{0, 0}, {seconds, 0}};
  setitimer(ITIMER_PROF, &timer, nullptr);
}

std::ptrdiff_t resident_bytes() {
  std::ifstream file("/proc/self/statm");
  std::ptrdiff_t pages = 0;
  file >> pages >> pages;
  return pages * sysconf(_SC_PAGESIZE);
}

class SoakHost {
 public:
  SoakHost(std::filesystem::path folder, std::size_t series, std::uint64_t seed, HostReport& report)
      : folder_(std::move(folder)), series_(series), engine_(seed), report_(report) {
    testkit::write_file(good_file(), good_);
    good_digest_ = whole_session(library_.entry_points(), good_).digest;
    diagnostics_.take();
  }

  // Until the host is told to stop. Returns whether all was well.
  bool run() {
    for (int i = 0; i < kWarmUp && !report_.should_stop; ++i) {
      if (!serve()) return false;
    }
    const std::ptrdiff_t descriptors = open_descriptors();
    const MemoryMeter meter;
    while (!report_.should_stop) {
      if (!serve()) return false;
      report_.held = meter.held();
      report_.descriptors = open_descriptors() - descriptors;
      if (report_.held != 0) return complain("memory is lost");
      if (report_.descriptors != 0) return complain("file descriptors are lost");
    }
    return true;
  }

 private:
  // Always false.
  bool complain(const std::string& what) {
    what.copy(report_.complaint.data(), report_.complaint.size() - 1);
    return false;
  }

  // One session, and now and then one over a dataset that does not change. Returns whether all is well.
  bool serve() {
    set_watchdog(kMostSeconds);
    SessionOptions options;
    options.simplify_sequential = engine_() % 4 == 0;
    options.group_parts = engine_() % 4 != 0;
    options.ends = engine_() % 2 == 0;
    options.lines = &diagnostics_;
    const Ending ending = whole_session(library_.entry_points(),
                                        ChangingSeries::first_file(folder_, engine_() % series_), options);
    const std::string wrong = undocumented(ending);
    if (!wrong.empty()) return complain(wrong);
    ++report_.by_outcome.at(static_cast<std::size_t>(ending.outcome));
    const std::uint64_t number = ++report_.sessions;
    if (number % kBetweenGood == 0) {
      const Ending good = whole_session(library_.entry_points(), good_);
      if (good.outcome != Outcome::kServed || good.digest != good_digest_) {
        return complain("the good dataset is not served as ever: " + good.detail);
      }
      report_.resident = resident_bytes();
    }
    if (!options.ends) library_.entry_points().exit_routine();
    set_watchdog(0);
    if (diagnostics_.take().find("MEMORY LEAK DETECTED") != std::string::npos) {
      return complain("the reader reports a leak");
    }
    return true;
  }

  std::filesystem::path folder_;
  std::size_t series_;
  std::mt19937_64 engine_;
  HostReport& report_;
  StderrFile diagnostics_;
  testkit::TemporaryDirectory directory_;
  std::filesystem::path good_ = directory_ / "good.fld";
  host::Library library_{FLD_THROWING_PLUGIN_FILE};
  std::uint64_t good_digest_ = 0;
};

}  // namespace

bool run_soak_host(const std::filesystem::path& folder, std::size_t series, std::uint64_t seed,
                   HostReport& report) {
  return SoakHost(folder, series, seed, report).run();
}

}  // namespace faults
