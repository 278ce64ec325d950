// Injected allocation failures. The program is linked so that the requests of its objects go through here:
// malloc, calloc and realloc with failing_memory.cpp, operator new with failing_own_new.cpp.
#pragma once

#include "tests/support/fault_plan.h"

// While it lives, the `request`-th request, from 1, fails.
class FailingMemory {
 public:
  explicit FailingMemory(int request, FaultPlan::Lasting lasting = FaultPlan::Lasting::kOnce) {
    plan().begin(request, lasting);
  }
  ~FailingMemory() { plan().end(); }
  FailingMemory(const FailingMemory&) = delete;
  FailingMemory& operator=(const FailingMemory&) = delete;

  // Whether that request was made.
  static bool has_failed() { return plan().has_struck(); }

  // The plan for all requests.
  static FaultPlan& plan();
};
