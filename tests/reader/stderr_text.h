// What a call writes to the standard error stream.
#pragma once

#include "gtest/gtest.h"
#include <string>

namespace reader_test {

// Calls `work` and returns what was written meanwhile, by this program or a library in it. An exception goes
// on, with the text lost.
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
