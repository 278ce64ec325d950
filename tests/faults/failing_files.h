// Injected failures of files and directories. The program is linked so that its objects open, read and seek
// through the functions here.
#pragma once

#include "tests/support/fault_plan.h"

namespace faults {

enum class FileFault {
  kReadError,  // a read fails with EIO
  kShortRead,  // a read returns a single byte
  kEnd,        // a read returns end of file
  kSeekError,  // a seek fails
  kOpenError,  // opening or fstat of a file or directory fails
};

// While it lives, the `request`-th request of this kind, from 1, fails.
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
