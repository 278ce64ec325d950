// The findings about header values: FLD-401 to FLD-405.
#include "gtest/gtest.h"
#include <limits>

#include "tests/inspect/checked.h"

namespace {

using inspect_test::line;
using inspect_test::Lines;
using inspect_test::small_file;
using inspect_test::told;
using inspect_test::Written;

TEST(HeaderFindings, TwoDimensions) {
  testkit::File file = small_file();
  file.header.set_dimension(2);
  file.region_sets.front().section("LS_Vector:v").blocks.pop_back();  // has no z then
  const Written written(file);
  EXPECT_EQ(told(written.bytes), Lines{line(401, written.value("Dimension", 0), "3", "2")});
}

TEST(HeaderFindings, AnImpossibleDimension) {
  testkit::File file = small_file();
  file.header.set_dimension(7);
  const Written written(file);
  EXPECT_EQ(told(written.bytes), Lines{line(402, written.value("Dimension", 0), "3", "7")});
}

TEST(HeaderFindings, AnUnusualIndexBase) {
  testkit::File file = small_file();
  file.header.set_bias(5);
  const Written written(file);
  EXPECT_EQ(told(written.bytes), Lines{line(403, written.value("Bias", 0), "0 or 1", "5")});
}

TEST(HeaderFindings, ANegativeCycle) {
  testkit::File file = small_file();
  file.header.set_cycle(-3, 0.0);
  const Written written(file);
  EXPECT_EQ(told(written.bytes), Lines{line(404, written.value("Cycle", 0), "0 or more", "-3")});
}

TEST(HeaderFindings, ATimeThatIsNoNumber) {
  testkit::File file = small_file();
  file.header.set_cycle(1, std::numeric_limits<double>::infinity());
  const Written written(file);
  EXPECT_EQ(told(written.bytes), Lines{line(405, written.value("Cycle", 1), "a finite number", "inf")});
}

}  // namespace
