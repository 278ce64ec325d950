// A pause of a second, for a way of doing things that turned out to be slow on this machine: trying it again
// then costs little, and finds it when it is fast.
#pragma once

#include <atomic>
#include <cstdint>
#include <ctime>

namespace fld {

// Nanoseconds of a clock.
inline int64_t nanoseconds(clockid_t clock) {
  timespec time = {};
  clock_gettime(clock, &time);
  return time.tv_sec * int64_t{1'000'000'000} + time.tv_nsec;
}

class Pause {
 public:
  void begin() { until_ = nanoseconds(CLOCK_MONOTONIC) + kLength; }
  bool is_on() const {
    const int64_t until = until_;
    return until != 0 && nanoseconds(CLOCK_MONOTONIC) < until;
  }

 private:
  static constexpr int64_t kLength = 1'000'000'000;  // ns
  std::atomic<int64_t> until_ = 0;
};

}  // namespace fld
