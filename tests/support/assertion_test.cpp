// The reader's assertions, in every build type.
#include "support/assertion.h"

#include <gtest/gtest.h>

namespace {

TEST(AssertionDeathTest, ShowsModuleFunctionAndExpression) {
  const int ndat = 2;
  EXPECT_DEATH(
      FLD_ASSERT(ndat == 3, "Convert_read_fld", "void FLDV4_ALE(_IO_FILE *, ALE &)"),
      "Convert_read_fld:[0-9]+: void FLDV4_ALE\\(_IO_FILE \\*, ALE &\\): Assertion `ndat == 3' failed");
}

TEST(AssertionDeathTest, ShowsTheTextThatItIsGivenInsteadOfTheExpression) {
  const bool is_right = false;
  EXPECT_DEATH(FLD_ASSERT_AS(is_right, "!m_fld.empty()", "fld", "int f()"),
               "fld:[0-9]+: int f\\(\\): Assertion `!m_fld.empty\\(\\)' failed");
}

TEST(AssertionDeathTest, ShowsTheLineThatItIsGiven) {
  EXPECT_DEATH(fld::fail_assertion("0", "Convert_common", 107, "void f()"),
               "Convert_common:107: void f\\(\\): Assertion `0' failed");
}

TEST(Assertion, WhatHoldsIsEvaluatedOnceAndSaysNothing) {
  int evaluations = 0;
  testing::internal::CaptureStderr();
  FLD_ASSERT(++evaluations == 1, "fld", "int f()");
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
  EXPECT_EQ(evaluations, 1);
}

TEST(Assertion, APointerIsACondition) {
  const int object = 0;
  const int* pointer = &object;
  testing::internal::CaptureStderr();
  FLD_ASSERT(pointer, "fld_reader", "int f()");
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

}  // namespace
