// Tests around the tracked allocator.
#pragma once

#include <gtest/gtest.h>
#include <string>

#include "support/tracked_allocation.h"

// How the process ends when cv_mfree is given something that is no block of the list.
inline constexpr char kUnknownBlock[] =
    "Convert_common:107: void cv_mfree\\(void \\*\\): Assertion `0' failed";

// The output of free_memory.
inline std::string leak_report() {
  testing::internal::CaptureStderr();
  fld::free_memory();
  return testing::internal::GetCapturedStderr();
}

// A test that starts with an empty allocation list and has to leave it empty.
class EmptyList : public testing::Test {
 protected:
  void SetUp() override { fld::set_memory(); }
  void TearDown() override { EXPECT_EQ(leak_report(), ""); }
};
