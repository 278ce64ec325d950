#include "bench/child_process.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <exception>
#include <fstream>
#include <malloc.h>
#include <stdexcept>
#include <string>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace bench {

namespace {

// An entry of the system's account of this process, in bytes.
std::size_t status_bytes(const std::string& key) {
  std::ifstream status("/proc/self/status");
  for (std::string word; status >> word;) {
    std::size_t kibibytes = 0;
    if (word == key + ":" && status >> kibibytes) return kibibytes * 1024;
  }
  throw std::runtime_error("the system does not tell " + key);
}

// The peak of the memory starts anew with what is resident now.
void forget_peak() {
  std::ofstream("/proc/self/clear_refs") << "5";
}

double in_seconds(const struct timeval& time) {
  return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) * 1e-6;
}

// What this process has taken of the processors.
double processor_seconds() {
  struct rusage usage = {};
  getrusage(RUSAGE_SELF, &usage);
  return in_seconds(usage.ru_utime) + in_seconds(usage.ru_stime);
}

// What a child reports: a measurement, or why there is none.
struct Report {
  Measurement measurement{};
  std::array<char, 200> failure{};
};

[[noreturn]] void run_child(const Work& work, int pipe_end) {
  Report report;
  try {
    Trial trial;
    work(trial);
    report.measurement = trial.result();
  } catch (const std::exception& error) {
    strncpy(report.failure.data(), error.what(), report.failure.size() - 1);
    if (report.failure[0] == '\0') report.failure[0] = '?';
  }
  _exit(write(pipe_end, &report, sizeof report) == sizeof report ? 0 : 1);
}

}  // namespace

Trial::Trial() {
  begin();
}

void Trial::begin() {
  malloc_trim(0);  // what was freed before is not to hide what is allocated from here on
  forget_peak();
  resident_ = status_bytes("VmRSS");
  left_out_ = 0;
  measured_ = {};
  processor_start_ = processor_seconds();
  start_ = std::chrono::steady_clock::now();
}

void Trial::leave_out(std::size_t bytes) {
  left_out_ += bytes;
  note_peak();
  forget_peak();
}

void Trial::end() {
  measured_.seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start_).count();
  measured_.processor_seconds = processor_seconds() - processor_start_;
  note_peak();
  has_ended_ = true;
}

void Trial::note_peak() {
  const auto without = static_cast<double>(resident_ + left_out_);
  measured_.bytes = std::max(measured_.bytes, static_cast<double>(status_bytes("VmHWM")) - without);
}

Measurement Trial::result() {
  if (!has_ended_) end();
  measured_.count = count_;
  return measured_;
}

Measurement measure_in_child(const Work& work) {
  std::array<int, 2> ends = {};
  if (pipe(ends.data()) != 0) throw std::runtime_error("no pipe");
  const pid_t child = fork();
  if (child < 0) throw std::runtime_error("no child process");
  if (child == 0) run_child(work, ends[1]);
  close(ends[1]);
  Report report;
  const bool has_reported = read(ends[0], &report, sizeof report) == sizeof report;
  close(ends[0]);
  int status = 0;
  if (waitpid(child, &status, 0) != child || !has_reported || status != 0) {
    throw std::runtime_error("the measured work ended before its time");
  }
  if (report.failure[0] != '\0') throw std::runtime_error(report.failure.data());
  return report.measurement;
}

}  // namespace bench
