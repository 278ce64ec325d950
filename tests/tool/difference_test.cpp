// What fldtool diff finds in two lists, and how it says so.
#include "tool/difference.h"

#include "gtest/gtest.h"
#include <limits>
#include <vector>

#include "host/undefined_value.h"

namespace {

using tool::Difference;
using tool::difference_text;
using tool::ListDifference;
using tool::Tolerance;

constexpr float kNan = std::numeric_limits<float>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

TEST(Tolerance, IsAbsoluteOrRelative) {
  EXPECT_TRUE((Tolerance{0.5, 0}).allows(1, 1.5));
  EXPECT_FALSE((Tolerance{0.5, 0}).allows(1, 1.75));
  EXPECT_TRUE((Tolerance{0, 0.25}).allows(-4, -3));
  EXPECT_TRUE((Tolerance{0, 0.25}).allows(3, 4));
  EXPECT_FALSE((Tolerance{0, 0.25}).allows(4, 2.75));
  EXPECT_TRUE((Tolerance{0, 0}).allows(1, 1));
}

TEST(Tolerance, OfInfiniteValuesIsNone) {
  const Tolerance all{kInfinity, kInfinity};
  EXPECT_FALSE(all.allows(1, kInfinity));
  EXPECT_FALSE(all.allows(-kInfinity, 1));
  EXPECT_FALSE(all.allows(-kInfinity, kInfinity));
  EXPECT_TRUE((Tolerance{0, 0}).allows(kInfinity, kInfinity));
}

TEST(Lists, TellTheFirstAndTheLargestDifference) {
  const std::vector<float> a = {1, 2, 3, 4, 5};
  const std::vector<float> b = {1, 2.5F, 7, 0, 5.125F};
  const ListDifference found = tool::compare_values(a, b, {0.125, 0});
  EXPECT_TRUE(found.any());
  EXPECT_EQ(found.compared, 5U);
  EXPECT_EQ(found.differing, 3U);
  EXPECT_EQ(found.first.index, 1U);
  EXPECT_EQ(found.first.a, 2);
  EXPECT_EQ(found.first.b, 2.5);
  EXPECT_EQ(found.most.index, 2U);  // the first of two that are as far apart
  EXPECT_EQ(found.most.b, 7);
}

TEST(Lists, UndefinedValuesAreTheSameAndSoAreThoseThatAreNoNumbers) {
  const std::vector<float> a = {host::kUndefinedValue, kNan, host::kUndefinedValue, 1, 2};
  const std::vector<float> b = {host::kUndefinedValue, kNan, kNan, host::kUndefinedValue, 200};
  const ListDifference found = tool::compare_values(a, b, {});
  EXPECT_EQ(found.differing, 3U);
  EXPECT_EQ(found.first.index, 2U);
  EXPECT_EQ(found.most.index, 2U);  // without a distance, before any that has one
  EXPECT_FALSE(tool::compare_values(a, a, {}).any());
}

TEST(Lists, OfWholeNumbers) {
  const std::vector<int> a = {1, 2, 3, 4};
  const std::vector<int> b = {1, 5, 0, 14};
  const ListDifference found = tool::compare_numbers(a, b);
  EXPECT_EQ(found.compared, 4U);
  EXPECT_EQ(found.differing, 3U);
  EXPECT_EQ(found.first.index, 1U);
  EXPECT_EQ(found.first.a, 2);
  EXPECT_EQ(found.first.b, 5);
  EXPECT_EQ(found.most.index, 3U);
  EXPECT_FALSE(tool::compare_numbers(a, a).any());
}

TEST(DifferenceText, OfStepsPartsAndVariables) {
  EXPECT_EQ(difference_text({.kind = "steps", .a = "3", .b = "4"}), "steps: 3 -> 4");
  EXPECT_EQ(difference_text({.kind = "time", .step_a = 1, .step_b = 1, .a = "0.5", .b = "0.6"}),
            "step 1: time: 0.5 -> 0.6");
  EXPECT_EQ(difference_text({.kind = "time", .step_a = 1, .step_b = 2, .a = "0.5", .b = "0.6"}),
            "steps 1 and 2: time: 0.5 -> 0.6");
  const tool::DifferingPart moved{3, 5, "surface", "blade"};
  EXPECT_EQ(difference_text({.kind = "nodes", .part = moved, .a = "8", .b = "9"}),
            "parts 3 and 5 (surface blade): nodes: 8 -> 9");
  const tool::DifferingPart same{3, 3, "surface", "blade"};
  EXPECT_EQ(difference_text({.kind = "nodes", .part = same, .a = "8", .b = "9"}),
            "part 3 (surface blade): nodes: 8 -> 9");
  const tool::DifferingPart missing{std::nullopt, 5, "volume", "fluid"};
  EXPECT_EQ(difference_text({.kind = "part", .part = missing, .a = "missing", .b = "there"}),
            "part 5 (volume fluid): missing -> there");
  EXPECT_EQ(difference_text({.kind = "variable", .variable = "p", .a = "there", .b = "missing"}),
            "variable p: there -> missing");
}

TEST(DifferenceText, OfLists) {
  Difference values{.kind = "values",
                    .variable = "v",
                    .component = "x",
                    .row = "node",
                    .list = ListDifference{10, 2, {3, 0.5, static_cast<double>(kNan)}, {7, 1, 1e30}}};
  EXPECT_EQ(difference_text(values),
            "variable v: values x: 2 of 10 differ; first node 4: 0.5 -> NaN; most node 8: 1 -> 1e+30");
  values.list->most.b = static_cast<double>(host::kUndefinedValue);
  EXPECT_EQ(difference_text(values),
            "variable v: values x: 2 of 10 differ; first node 4: 0.5 -> NaN; most node 8: 1 -> undefined");
  values.list->differing = 1;
  EXPECT_EQ(difference_text(values), "variable v: values x: 1 of 10 differ; first node 4: 0.5 -> NaN");
  const Difference corners{.kind = "connectivity",
                           .component = "tet",
                           .row = "element",
                           .row_length = 4,
                           .first_row = 10,
                           .list = ListDifference{8, 2, {6, 1, 2}, {7, 3, 9}}};
  EXPECT_EQ(difference_text(corners), "connectivity tet: 2 of 8 differ; first element 12 entry 3: 1 -> 2");
}

}  // namespace
