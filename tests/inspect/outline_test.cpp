// What an outline takes from a file.
#include "inspect/outline.h"

#include "gtest/gtest.h"
#include <algorithm>
#include <optional>
#include <string>

#include "inspect/byte_source.h"
#include "inspect/walker.h"
#include "tests/inspect/checked.h"

namespace {

inspect::Outline outline_of(const testkit::File& file) {
  inspect::StringSource source(testkit::to_bytes(file));
  inspect::OutlineTaker taker;
  inspect::walk(source, taker);
  return taker.outline();
}

TEST(Outline, OfAFile) {
  testkit::File file = inspect_test::small_file();
  file.header.set_bias(1);
  file.header.set_cycle(12, 0.5);
  file.header.set_unused(1.5F, 2.5);
  const inspect::Outline outline = outline_of(file);
  EXPECT_EQ(outline.bias, 1);
  EXPECT_EQ(outline.cycle, 12);
  EXPECT_EQ(outline.time, 0.5);
  EXPECT_EQ(outline.undefined_single, 1.5F);
  EXPECT_EQ(outline.undefined_double, 2.5);
  EXPECT_EQ(outline.region_set_count, 1);
  ASSERT_EQ(outline.region_sets.size(), 1U);
  EXPECT_EQ(outline.region_sets[0].nodes, 4);
  EXPECT_EQ(outline.region_sets[0].elements, 1);
  EXPECT_EQ(outline.region_sets[0].base_cycle, std::nullopt);
}

TEST(Outline, OfAHeaderInAnotherOrder) {
  testkit::File file = inspect_test::small_file();
  file.header.set_cycle(12, 0.5);
  file.header.set_bias(1);
  std::reverse(file.header.items.begin(), file.header.items.end());
  EXPECT_EQ(outline_of(file).cycle, 12);
  EXPECT_EQ(outline_of(file).bias, 1);
}

TEST(Outline, OfAMarkerOfUndefinedValuesInSinglePrecisionAlone) {
  testkit::File file = inspect_test::small_file();
  file.header.set_unused(1.5F, 2.5);
  file.header.item("Unused").blocks.pop_back();
  EXPECT_EQ(outline_of(file).undefined_single, 1.5F);
  EXPECT_EQ(outline_of(file).undefined_double, std::nullopt);
}

TEST(Outline, OfACycleWithoutATime) {
  testkit::File file = inspect_test::small_file();
  file.header.item("Cycle").blocks.pop_back();
  file.header.item("Cycle").blocks[0] = testkit::Block::integer(1'000'000'000);
  EXPECT_EQ(outline_of(file).cycle, 1'000'000'000);
  EXPECT_EQ(outline_of(file).time, inspect::Outline().time);
}

}  // namespace
