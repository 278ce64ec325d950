#include "tool/jobs.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <limits>
#include <optional>
#include <poll.h>
#include <sched.h>
#include <string>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <system_error>
#include <unistd.h>
#include <utility>

#include "CLI/CLI.hpp"
#include "fmt/format.h"
#include "host/anonymous_file.h"
#include "nlohmann/json.hpp"
#include "tool/best_effort_write.h"
#include "tool/exit_status.h"
#include "tool/interrupt.h"
#include "tool/number_range.h"
#include "tool/progress.h"

namespace tool {
namespace {

using Bytes = std::vector<std::uint8_t>;

constexpr int kMostJobs = 256;

[[noreturn]] void fail(const char* what, int error) {
  throw CommandError(ExitStatus::failure,
                     fmt::format("{}: {}", what, std::generic_category().message(error)));
}

// MemAvailable of /proc/meminfo in bytes; as much as there may be where it cannot be read.
std::uint64_t free_memory() {
  constexpr std::uint64_t kUnit = 1024;
  std::ifstream file("/proc/meminfo");
  for (std::string word; file >> word;) {
    std::uint64_t value = 0;
    if (word == "MemAvailable:" && file >> value) return value * kUnit;
  }
  return std::numeric_limits<std::uint64_t>::max();
}

std::uint64_t size_of_file(const std::string& path) {
  std::error_code error;
  const std::uintmax_t size = std::filesystem::file_size(path, error);
  return error ? 0 : size;
}

// Reports go through a pipe, each after its length. What is said about a report that is not the result of the
// work: the status and the message of the exception.
constexpr char kResult[] = "result";
constexpr char kMessages[] = "messages";
constexpr char kStatus[] = "status";
constexpr char kError[] = "error";

void write_all(int descriptor, const void* bytes, std::size_t size) {
  const auto* next = static_cast<const char*>(bytes);
  while (size > 0) {
    const ssize_t written = write(descriptor, next, size);
    if (written < 0 && errno == EINTR) continue;
    if (written <= 0) _exit(static_cast<int>(ExitStatus::failure));  // the parent is gone
    next += written;
    size -= static_cast<std::size_t>(written);
  }
}

// The standard error stream of a job: a file, which is sent with each report.
class Messages {
 public:
  Messages() : file_(host::open_anonymous_file()) {
    if (file_ >= 0) dup2(file_, STDERR_FILENO);
  }

  // What was written since the last call.
  Bytes take() {
    Bytes text;
    if (file_ < 0) return text;
    text.resize(static_cast<std::size_t>(std::max<off_t>(lseek(file_, 0, SEEK_END), 0)));
    const ssize_t given = pread(file_, text.data(), text.size(), 0);
    text.resize(static_cast<std::size_t>(std::max<ssize_t>(given, 0)));
    if (ftruncate(file_, 0) == 0) lseek(file_, 0, SEEK_SET);
    return text;
  }

 private:
  int file_;
};

// The report on a piece.
Json report_on(const std::function<Json(std::size_t)>& work, std::size_t piece) {
  try {
    stop_if_interrupted();
    return {{kResult, work(piece)}};
  } catch (const Interrupted&) {
    _exit(static_cast<int>(ExitStatus::interrupted));
  } catch (const QuietExit& exit) {
    return {{kStatus, exit.status()}};
  } catch (const CommandError& error) {
    return {{kStatus, error.status()}, {kError, as_bytes(error.what())}};
  } catch (const std::exception& error) {
    return {{kStatus, ExitStatus::failure}, {kError, as_bytes(error.what())}};
  }
}

// One of the processes: it works on every `stride`-th piece.
class Job {
 public:
  Job(std::size_t first, std::size_t stride, std::size_t pieces,
      const std::function<Json(std::size_t)>& work) {
    std::array<int, 2> ends = {};
    if (pipe2(ends.data(), O_CLOEXEC) != 0) fail("pipe", errno);
    const pid_t parent = getpid();
    process_ = fork();
    if (process_ == 0) {
      prctl(PR_SET_PDEATHSIG, SIGKILL);
      if (getppid() != parent) _exit(static_cast<int>(ExitStatus::interrupted));
      close(ends[0]);
      run(ends[1], first, stride, pieces, work);
    }
    const int error = errno;
    close(ends[1]);
    results_ = ends[0];
    if (process_ >= 0) return;
    close(results_);
    fail("fork", error);
  }
  Job(const Job&) = delete;
  Job& operator=(const Job&) = delete;
  Job(Job&& other) noexcept
      : process_(std::exchange(other.process_, -1)), results_(std::exchange(other.results_, -1)) {}
  Job& operator=(Job&&) = delete;
  ~Job() {
    if (results_ >= 0) close(results_);
    if (process_ <= 0) return;
    // Not a signal that it could handle: it may wait for room in its pipe. What it left half written is the
    // parent's to remove.
    kill(process_, SIGKILL);
    wait();
  }

  // The report on the next piece.
  Json next_report() {
    std::uint64_t size = 0;
    read_all(&size, sizeof size);
    Bytes bytes(size);
    read_all(bytes.data(), bytes.size());
    return Json::from_cbor(bytes);
  }

 private:
  [[noreturn]] static void run(int results, std::size_t first, std::size_t stride, std::size_t pieces,
                               const std::function<Json(std::size_t)>& work) {
    Progress::silence();
    Messages messages;
    for (std::size_t piece = first; piece < pieces; piece += stride) {
      Json report = report_on(work, piece);
      report[kMessages] = Json::binary(messages.take());
      const Bytes bytes = Json::to_cbor(report);
      const std::uint64_t size = bytes.size();
      write_all(results, &size, sizeof size);
      write_all(results, bytes.data(), bytes.size());
      if (report.contains(kStatus)) break;
    }
    // No destructors: what they would close or remove is the parent's.
    _exit(static_cast<int>(ExitStatus::ok));
  }

  void read_all(void* bytes, std::size_t size) {
    auto* next = static_cast<char*>(bytes);
    while (size > 0) {
      constexpr int kBetweenLooks = 100;  // ms
      pollfd waiting = {results_, POLLIN, 0};
      const int ready = poll(&waiting, 1, kBetweenLooks);
      stop_if_interrupted();
      if (ready <= 0) continue;
      const ssize_t given = read(results_, next, size);
      if (given < 0 && errno == EINTR) continue;
      if (given <= 0) report_end();
      next += given;
      size -= static_cast<std::size_t>(given);
    }
  }

  int wait() {
    int status = 0;
    while (waitpid(process_, &status, 0) < 0 && errno == EINTR) {
    }
    process_ = -1;
    return status;
  }

  // The process ended before its time.
  [[noreturn]] void report_end() {
    const int status = wait();
    if (WIFEXITED(status) && WEXITSTATUS(status) == static_cast<int>(ExitStatus::interrupted))
      throw Interrupted();
    throw CommandError(ExitStatus::failure,
                       WIFSIGNALED(status) ? fmt::format("a job was ended by signal {} ({})",
                                                         WTERMSIG(status), strsignal(WTERMSIG(status)))
                                           : fmt::format("a job ended with status {}", WEXITSTATUS(status)));
  }

  pid_t process_ = -1;
  int results_ = -1;
};

// The result in a report, after the messages.
Json result_of(Json report) {
  write_if_possible(STDERR_FILENO, text_of(report.at(kMessages)));
  if (!report.contains(kStatus)) return std::move(report.at(kResult));
  const auto status = report.at(kStatus).get<ExitStatus>();
  if (!report.contains(kError)) throw QuietExit(status);
  throw CommandError(status, text_of(report.at(kError)));
}

}  // namespace

void add_jobs_option(CLI::App& command, int& jobs, const char* pieces) {
  command
      .add_option("--jobs", jobs,
                  fmt::format("How many {} to work on at once (default: one per core)", pieces))
      ->check(whole_number(1, kMostJobs));
}

int usable_jobs(int wanted, std::size_t pieces, std::uint64_t bytes) {
  if (wanted == 0) {
    cpu_set_t cores;
    wanted = sched_getaffinity(0, sizeof cores, &cores) == 0 ? CPU_COUNT(&cores) : 1;
  }
  const std::uint64_t fitting = free_memory() / 2 / std::max<std::uint64_t>(bytes, 1);
  const std::uint64_t most = std::min<std::uint64_t>({fitting, pieces, kMostJobs});
  return static_cast<int>(std::clamp<std::uint64_t>(most, 1, static_cast<std::uint64_t>(wanted)));
}

std::uint64_t memory_of_step(const host::Session& session, const std::vector<int>& steps) {
  // The reader's arrays, the host's, and those that are made of them.
  constexpr std::uint64_t kCopies = 3;
  std::uint64_t largest = size_of_file(session.path().string());
  for (const int step : steps) largest = std::max(largest, size_of_file(session.file_of_step(step)));
  return kCopies * largest;
}

Json as_bytes(std::string_view text) {
  return Json::binary({text.begin(), text.end()});
}

std::string text_of(const Json& bytes) {
  const Json::binary_t& binary = bytes.get_binary();
  return {binary.begin(), binary.end()};
}

void run_jobs(int jobs, std::size_t pieces, const std::function<Json(std::size_t)>& work,
              const std::function<bool(std::size_t, Json)>& take) {
  if (jobs <= 1) {
    for (std::size_t i = 0; i < pieces; ++i) {
      stop_if_interrupted();
      if (!take(i, work(i))) return;
    }
    return;
  }
  std::fflush(nullptr);
  std::vector<Job> running;
  const auto stride = static_cast<std::size_t>(jobs);
  running.reserve(stride);
  for (std::size_t first = 0; first < stride; ++first) running.emplace_back(first, stride, pieces, work);
  for (std::size_t i = 0; i < pieces; ++i) {
    if (!take(i, result_of(running[i % stride].next_report()))) return;
  }
}

}  // namespace tool
