// One trial of the reader: what an input may cost and how it may end. An exception of another class than the
// documented ones escapes; one with another text, an assertion that is not listed, too much time, memory, or
// an array that nobody released ends the process.
#pragma once

#include <cstddef>
#include <ctime>
#include <new>
#include <string>

#include "support/errors.h"
#include "tests/faults/assertion_failure.h"
#include "tests/faults/memory_meter.h"
#include "tests/faults/spoken_lines.h"
#include "tests/faults/whole_session.h"

namespace fuzz {

// Ends the process: the reader broke the promise that `what` names.
[[noreturn]] void report_broken_promise(const char* what);

// Does so unless a call may end like this.
void expect_documented(const faults::CallEnding& call);

// Calls `work`, which may end with any of the errors that the reader documents; whether it ran through.
template <class Work>
bool ends_as_documented(Work work) {
  try {
    work();
    return true;
  } catch (const fld::FLDException& exception) {
    expect_documented({faults::Outcome::kException, std::string(": ") + exception.getMessage(), ""});
  } catch (const faults::AssertionFailure& failure) {
    expect_documented({faults::Outcome::kAssertion, failure.what(), ""});
  } catch (const std::bad_alloc&) {
  }
  return false;
}

// From its making to its end the lines of the reader are kept in memory, and the limits hold: 1 s of
// processor time, and 16 MiB and 8 times the file of memory.
class Trial : public faults::SpokenLines {
 public:
  explicit Trial(std::size_t file_size);
  ~Trial() override;
  Trial(const Trial&) = delete;
  Trial& operator=(const Trial&) = delete;

  std::size_t length() const override;
  std::string since(std::size_t begin) const override;

 private:
  std::ptrdiff_t memory_limit_;
  faults::MemoryMeter memory_;
  std::clock_t start_;
};

}  // namespace fuzz
