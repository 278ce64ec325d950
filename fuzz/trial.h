// One trial of the reader, with limits on time and memory. Exceptions of undocumented classes propagate. An
// undocumented message or assertion, a leaked array, or too much time or memory ends the process.
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

// Ends the process because the reader broke the guarantee `what`.
[[noreturn]] void report_broken_promise(const char* what);

// Does so unless this is a documented result of a call.
void expect_documented(const faults::CallEnding& call);

// Calls `work`, which may throw any documented error. Returns whether it completed.
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

// While it lives, the reader's messages are kept in memory and the limits apply: 1 s of CPU time, and 16 MiB
// plus 8 times the file size of memory.
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
