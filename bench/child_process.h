// Measuring one piece of work in a process of its own: its time, and the memory that it needed at its peak.
#pragma once

#include <functional>

namespace bench {

struct Measurement {
  double seconds = 0.0;         // elapsed
  double cpu_seconds = 0.0;     // of the processor, the system's share included
  double peak_mebibytes = 0.0;  // resident, of the whole process
};

// Runs `work` in a child process. Throws std::runtime_error when it fails there.
Measurement measure_in_child(const std::function<void()>& work);

}  // namespace bench
