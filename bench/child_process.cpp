#include "bench/child_process.h"

#include <array>
#include <chrono>
#include <exception>
#include <stdexcept>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace bench {

namespace {

double in_seconds(const struct timeval& time) {
  return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) * 1e-6;
}

[[noreturn]] void run_child(const std::function<void()>& work, int report) {
  int status = 1;
  try {
    const auto start = std::chrono::steady_clock::now();
    work();
    const double seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    if (write(report, &seconds, sizeof seconds) == sizeof seconds) status = 0;
  } catch (const std::exception&) {
    status = 1;
  }
  _exit(status);
}

}  // namespace

Measurement measure_in_child(const std::function<void()>& work) {
  std::array<int, 2> ends = {};
  if (pipe(ends.data()) != 0) throw std::runtime_error("no pipe");
  const pid_t child = fork();
  if (child < 0) throw std::runtime_error("no child process");
  if (child == 0) run_child(work, ends[1]);
  close(ends[1]);
  Measurement measurement;
  const bool reported =
      read(ends[0], &measurement.seconds, sizeof measurement.seconds) == sizeof measurement.seconds;
  close(ends[0]);
  int status = 0;
  struct rusage usage = {};
  if (wait4(child, &status, 0, &usage) != child || !reported || status != 0) {
    throw std::runtime_error("the measured work failed");
  }
  measurement.cpu_seconds = in_seconds(usage.ru_utime) + in_seconds(usage.ru_stime);
  measurement.peak_mebibytes = static_cast<double>(usage.ru_maxrss) / 1024.0;
  return measurement;
}

}  // namespace bench
