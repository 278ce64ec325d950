// One trial of the reader: what an input may cost and how it may end. An exception that is not among the
// documented ones escapes; too much time, memory, or an array that nobody released ends the process.
#pragma once

#include <cstddef>
#include <ctime>
#include <new>

#include "support/errors.h"
#include "tests/faults/assertion_failure.h"
#include "tests/faults/memory_meter.h"

namespace fuzz {

// Calls `work`, which may end with any of the errors that the reader documents; whether it ran through.
template <class Work>
bool ends_as_documented(Work work) {
  try {
    work();
    return true;
  } catch (const fld::FLDException&) {
  } catch (const faults::AssertionFailure&) {
  } catch (const std::bad_alloc&) {
  }
  return false;
}

// Ends the process: the reader broke the promise that `what` names.
[[noreturn]] void report_broken_promise(const char* what);

// From its making to its end the lines of the reader are kept in memory, and the limits hold: 1 s of
// processor time, and 16 MiB and 8 times the file of memory.
class Trial {
 public:
  explicit Trial(std::size_t file_size);
  ~Trial();
  Trial(const Trial&) = delete;
  Trial& operator=(const Trial&) = delete;

 private:
  std::ptrdiff_t memory_limit_;
  faults::MemoryMeter memory_;
  std::clock_t start_;
};

}  // namespace fuzz
