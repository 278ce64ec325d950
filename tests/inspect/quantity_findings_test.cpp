// The findings about quantities: FLD-701 to FLD-704.
#include "gtest/gtest.h"
#include <limits>

#include "testkit/quantity.h"
#include "testkit/small_meshes.h"
#include "tests/inspect/checked.h"

namespace {

using inspect_test::kNotANumber;
using inspect_test::line;
using inspect_test::Lines;
using inspect_test::told;
using inspect_test::Written;
using testkit::Precision;

constexpr double kInfinity = std::numeric_limits<double>::infinity();

// A tetrahedron, so four nodes, with these values.
Written with_values(std::vector<double> values, Precision precision = Precision::kSingle) {
  testkit::File file = testkit::file_of(testkit::one_tetrahedron());
  file.region_sets.front().add(
      testkit::scalar_section({.name = "p", .values = std::move(values), .precision = precision}));
  return Written(file);
}

TEST(QuantityFindings, AnotherNumberOfValuesThanNodes) {
  const Written file = with_values({1, 2, 3});
  EXPECT_EQ(told(file.bytes), Lines{line(701, file.value("LS_Scalar:p", 1), "4", "3")});
}

TEST(QuantityFindings, ValuesThatAreNotANumber) {
  const Written file = with_values({1, kNotANumber, 3, kNotANumber});
  EXPECT_EQ(told(file.bytes), Lines{line(702, file.value("LS_Scalar:p", 2) + 4, "numbers", "2 of 4")});
}

TEST(QuantityFindings, InfiniteValues) {
  const Written file = with_values({kInfinity, 2, -kInfinity, 4}, Precision::kDouble);
  EXPECT_EQ(told(file.bytes), Lines{line(703, file.value("LS_Scalar:p", 2), "finite numbers", "2 of 4")});
}

TEST(QuantityFindings, UndefinedValuesAreANote) {
  for (const Precision precision : {Precision::kSingle, Precision::kDouble}) {
    const Written file = with_values({1, 2, 0.9901e30, 0.9899e30}, precision);
    const auto width = static_cast<std::uint64_t>(precision);
    EXPECT_EQ(told(file.bytes),
              Lines{line(704, file.value("LS_Scalar:p", 2) + 2 * width, "defined values", "1 of 4")});
    EXPECT_FALSE(inspect_test::finds(file.bytes, true));
  }
}

TEST(QuantityFindings, EachComponentOfAVectorForItself) {
  testkit::File file = testkit::file_of(testkit::one_tetrahedron());
  file.region_sets.front().add(testkit::vector_section(
      {.name = "v", .x = {1, 2, 3, kNotANumber}, .y = {1, 2, 3, 4}, .z = {kNotANumber, 2, 3, 4}}));
  const Written written(file);
  EXPECT_EQ(told(written.bytes), (Lines{line(702, written.value("LS_Vector:v", 3) + 12, "numbers", "1 of 4"),
                                        line(702, written.value("LS_Vector:v", 5), "numbers", "1 of 4")}));
}

TEST(QuantityFindings, NothingIsUndefinedWithoutAMarker) {
  testkit::File file = testkit::file_of(testkit::one_tetrahedron());
  file.header.remove("Unused");
  file.region_sets.front().add(testkit::scalar_section({.name = "p", .values = {1, 2, 3, 1.0e30}}));
  EXPECT_EQ(told(file), Lines{line(215, 0, "Unused", "none")});
}

}  // namespace
