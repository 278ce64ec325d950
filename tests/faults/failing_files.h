// Files and folders that fail when a test wants it. The program is linked so that the streams that its
// objects open are read and positioned by here, and so that its objects open files and folders by here.
#pragma once

#include "tests/support/fault_plan.h"

namespace faults {

enum class FileFault {
  kReadError,  // a read ends with an input/output error
  kShortRead,  // a read gives a single byte, as a read may
  kEnd,        // a read finds the end of the file
  kSeekError,  // the stream cannot be positioned
  kOpenError,  // a file or folder cannot be opened, or its size not be found out
};

// While it lives, the `request`-th request of that kind, counted from 1, fails so.
class FailingFiles {
 public:
  FailingFiles(FileFault fault, int request, FaultPlan::Lasting lasting);
  ~FailingFiles();
  FailingFiles(const FailingFiles&) = delete;
  FailingFiles& operator=(const FailingFiles&) = delete;

  static bool has_failed() { return plan().has_struck(); }
  static FaultPlan& plan();
};

}  // namespace faults
