// The messages of a call.
#pragma once

#include "gtest/gtest.h"
#include <string>

namespace reader_test {

// Calls `work` and returns what this process wrote to stderr meanwhile. Exceptions propagate and discard the
// text.
template <class Work>
std::string stderr_of(Work work) {
  testing::internal::CaptureStderr();
  try {
    work();
  } catch (...) {
    testing::internal::GetCapturedStderr();
    throw;
  }
  return testing::internal::GetCapturedStderr();
}

}  // namespace reader_test
