// Memory that runs out when a test wants it. The program is linked so that every malloc, calloc and realloc
// of its objects comes by here first.
#pragma once

#include "tests/support/fault_plan.h"

// While it lives, the `request`-th request from its construction on, counted from 1, finds no memory.
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

  // What all requests are held against.
  static FaultPlan& plan();
};
