#include "host/variable_description.h"

#include "gtest/gtest.h"

namespace {

void expect_split(const char* description, const char* label, const char* name) {
  const host::VariableDescription parts = host::split_description(description);
  EXPECT_EQ(parts.label, label) << description;
  EXPECT_EQ(parts.name, name) << description;
}

TEST(VariableDescription, NameStandsInTheLastParentheses) {
  expect_split("Kinematic pressure [m2/s2] (p)", "Kinematic pressure [m2/s2]", "p");
  expect_split("Velocity (absolute) (U)", "Velocity (absolute)", "U");
}

TEST(VariableDescription, NameMayHoldParentheses) {
  expect_split("Pressure (P(abs))", "Pressure", "P(abs)");
}

TEST(VariableDescription, WithoutParenthesesAllIsName) {
  expect_split("MatOfElements", "", "MatOfElements");
  expect_split("odd)", "", "odd)");
  expect_split("", "", "");
}

TEST(VariableDescription, EmptyLabelOrName) {
  expect_split(" (p)", "", "p");
  expect_split("label ()", "label", "");
}

}  // namespace
