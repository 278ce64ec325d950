// Measuring one piece of work in a process of its own: its time, and the memory that it needed at its peak.
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>

namespace bench {

struct Measurement {
  double seconds = 0.0;            // elapsed
  double processor_seconds = 0.0;  // the system's share included
  double bytes = 0.0;              // by which the process grew, at its peak, without those that were left out
  double count = 0.0;              // whatever the work counts
};

// What is measured of the work: by default all of it.
class Trial {
 public:
  Trial();

  // Measures time and memory from here on: what went before was preparation.
  void begin();
  // Ends the measured stretch; without it, that is the end of the work.
  void end();
  // Arrays of so many bytes, all of them written since the last call of this kind, do not count in the
  // memory. The peak so far is taken without them, and the next one is looked for from here on: a peak before
  // these arrays were there is not made smaller by them.
  void leave_out(std::size_t bytes);
  void set_count(double count) { count_ = count; }

  // Ends the stretch if that was not done yet.
  Measurement result();

 private:
  void note_peak();

  std::chrono::steady_clock::time_point start_;
  double processor_start_ = 0.0;
  std::size_t resident_ = 0;  // at the start
  std::size_t left_out_ = 0;
  double count_ = 0.0;
  bool has_ended_ = false;
  Measurement measured_;
};

using Work = std::function<void(Trial&)>;

// Runs `work` in a child process. Throws std::runtime_error, with the child's message, when it fails there.
Measurement measure_in_child(const Work& work);

}  // namespace bench
