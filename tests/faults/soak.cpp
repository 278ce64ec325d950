// soak SECONDS [SEED]: four host processes open, step through and close random datasets while this process
// rewrites, damages, truncates and removes the files. Prints once a minute, and at the end, what the hosts
// did. SIGINT and SIGTERM end it early. The exit status is 0 if no host crashed, hung, broke a guarantee, or
// kept memory or file descriptors.
#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <new>
#include <string>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <system_error>
#include <thread>
#include <unistd.h>

#include "testkit/temporary_directory.h"
#include "tests/faults/soak_files.h"
#include "tests/faults/soak_host.h"

namespace faults {
namespace {

using Clock = std::chrono::steady_clock;
using std::chrono::seconds;

constexpr std::size_t kHosts = 4;
constexpr std::size_t kSeries = 12;
constexpr auto kBetweenChanges = std::chrono::milliseconds(1);
constexpr auto kBetweenLines = seconds(60);
constexpr auto kMostSilence = seconds(300);  // a host without a session so long hangs

volatile std::sig_atomic_t is_interrupted = 0;

void interrupt(int /*signal*/) {
  is_interrupted = 1;
}

// In /dev/shm if that is possible, to be gentle with the disk.
std::filesystem::path place_for_files() {
  return access("/dev/shm", W_OK) == 0 ? std::filesystem::path("/dev/shm")
                                       : std::filesystem::temp_directory_path();
}

class Soak {
 public:
  explicit Soak(std::uint64_t seed) : files_(directory_.path(), kSeries, seed) {
    void* shared = mmap(nullptr, sizeof(Reports), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
    if (shared == MAP_FAILED) throw std::system_error(errno, std::generic_category(), "mmap");
    reports_ = new (shared) Reports;
    for (std::size_t i = 0; i < kHosts; ++i) start_host(i, seed + 1 + i);
  }
  ~Soak() {
    stop();
    reports_->~Reports();
    munmap(reports_, sizeof(Reports));
  }
  Soak(const Soak&) = delete;
  Soak& operator=(const Soak&) = delete;

  // Returns whether all hosts were well.
  bool run(seconds duration) {
    const auto start = Clock::now();
    auto next_line = start + kBetweenLines;
    bool is_well = true;
    while (is_well && is_interrupted == 0 && Clock::now() < start + duration) {
      files_.change();
      ++changes_;
      std::this_thread::sleep_for(kBetweenChanges);
      is_well = none_has_ended() && none_hangs();
      if (Clock::now() >= next_line) {
        next_line += kBetweenLines;
        print(std::chrono::duration_cast<seconds>(Clock::now() - start));
      }
    }
    is_well = stop() && is_well;
    print(std::chrono::duration_cast<seconds>(Clock::now() - start));
    return is_well;
  }

 private:
  using Reports = std::array<HostReport, kHosts>;
  struct Progress {
    pid_t process = -1;
    std::uint64_t sessions = 0;
    Clock::duration since{};  // of watching
  };

  void start_host(std::size_t number, std::uint64_t seed) {
    const pid_t parent = getpid();
    const pid_t process = fork();
    if (process < 0) throw std::system_error(errno, std::generic_category(), "fork");
    if (process > 0) {
      hosts_.at(number) = {process, 0, {}};
      return;
    }
    // This process tells the hosts to stop; without it none goes on.
    std::signal(SIGINT, SIG_IGN);
    std::signal(SIGTERM, SIG_IGN);
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (getppid() != parent) _exit(1);
    // Half of the hosts share even small arrays among threads.
    setenv("FLD_THREADS", number % 2 == 0 ? "1" : "4", 1);
    setenv("FLD_THREADS_FROM", "64", 1);
    bool is_well = false;
    try {
      is_well = run_soak_host(directory_.path(), kSeries, seed, reports_->at(number));
    } catch (const std::exception& error) {
      std::strncpy(reports_->at(number).complaint.data(), error.what(),
                   reports_->at(number).complaint.size() - 1);
    }
    _exit(is_well ? 0 : 1);
  }

  bool judge(std::size_t number, int status) {
    const bool is_well = WIFEXITED(status) && WEXITSTATUS(status) == 0;
    if (WIFSIGNALED(status)) std::printf("host %zu was ended by signal %d\n", number, WTERMSIG(status));
    if (!is_well) std::printf("host %zu: %s\n", number, reports_->at(number).complaint.data());
    hosts_.at(number).process = -1;
    return is_well;
  }

  bool none_has_ended() {
    for (std::size_t i = 0; i < kHosts; ++i) {
      int status = 0;
      if (waitpid(hosts_.at(i).process, &status, WNOHANG) == 0) continue;
      judge(i, status);
      return false;
    }
    return true;
  }

  // Time in which this process is stopped does not count, as the hosts may be stopped too.
  bool none_hangs() {
    const auto now = Clock::now();
    watched_ += std::min<Clock::duration>(now - looked_, seconds(1));
    looked_ = now;
    for (std::size_t i = 0; i < kHosts; ++i) {
      Progress& host = hosts_.at(i);
      const std::uint64_t sessions = reports_->at(i).sessions;
      if (sessions != host.sessions) {
        host.sessions = sessions;
        host.since = watched_;
      } else if (watched_ - host.since > kMostSilence) {
        std::printf("host %zu hangs\n", i);
        kill(host.process, SIGKILL);
        return false;
      }
    }
    return true;
  }

  bool stop() {
    for (HostReport& report : *reports_) report.should_stop = true;
    bool is_well = true;
    for (std::size_t i = 0; i < kHosts; ++i) {
      if (hosts_.at(i).process < 0) continue;
      int status = 0;
      waitpid(hosts_.at(i).process, &status, 0);
      is_well = judge(i, status) && is_well;
    }
    return is_well;
  }

  void print(seconds passed) const {
    std::uint64_t sessions = 0;
    std::array<std::uint64_t, kOutcomes> outcomes{};
    std::string held;
    for (const HostReport& report : *reports_) {
      sessions += report.sessions;
      for (std::size_t o = 0; o < outcomes.size(); ++o) outcomes.at(o) += report.by_outcome.at(o);
      held += " " + std::to_string(report.resident >> 10) + " KiB (" + std::to_string(report.held) +
              " bytes, " + std::to_string(report.descriptors) + " descriptors more)";
    }
    std::printf("%5lld s: %llu changes, %llu sessions:", static_cast<long long>(passed.count()),
                static_cast<unsigned long long>(changes_), static_cast<unsigned long long>(sessions));
    for (std::size_t o = 0; o < outcomes.size(); ++o) {
      if (outcomes.at(o) == 0) continue;
      std::printf(" %llu %s,", static_cast<unsigned long long>(outcomes.at(o)),
                  name_of(static_cast<Outcome>(o)));
    }
    std::printf(" resident:%s\n", held.c_str());
    std::fflush(stdout);
  }

  testkit::TemporaryDirectory directory_{place_for_files()};
  ChangingSeries files_;
  Reports* reports_ = nullptr;
  std::array<Progress, kHosts> hosts_{};
  std::uint64_t changes_ = 0;
  Clock::duration watched_{};  // how long this process has looked after the hosts
  Clock::time_point looked_ = Clock::now();
};

int run(int argc, char** argv) {
  const int duration = argc > 1 ? std::atoi(argv[1]) : 0;
  if (duration <= 0 || argc > 3) {
    std::fprintf(stderr, "usage: soak SECONDS [SEED]\n");
    return 2;
  }
  std::signal(SIGINT, interrupt);
  std::signal(SIGTERM, interrupt);
  return Soak(argc > 2 ? std::strtoull(argv[2], nullptr, 10) : 1).run(seconds(duration)) ? 0 : 1;
}

}  // namespace
}  // namespace faults

int main(int argc, char** argv) {
  try {
    return faults::run(argc, argv);
  } catch (const std::exception& error) {
    std::fprintf(stderr, "soak: %s\n", error.what());
    return 2;
  }
}
