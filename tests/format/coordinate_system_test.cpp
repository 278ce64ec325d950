// The coordinate system of a region set.
#include <gtest/gtest.h>
#include <string>

#include "format/nodes.h"
#include "testkit/mesh.h"
#include "tests/format/input.h"
#include "tests/support/thrown_message.h"

namespace {

using testkit::Block;
using testkit::Section;

int read(const Section& section, int before) {
  const Input input(body_of(section) + kNext);
  int value = before;
  fld::FLDV4_CoordinateSystem(input.stream(), value);
  EXPECT_EQ(input.rest(), kNext);
  return value;
}

TEST(CoordinateSystem, IsTheValueOfTheSection) {
  EXPECT_EQ(read(testkit::coordinate_system_section(0), 1), 0);
  EXPECT_EQ(read(testkit::coordinate_system_section(1), 0), 1);
  EXPECT_EQ(read(testkit::coordinate_system_section(-3), 0), -3);
}

TEST(CoordinateSystem, WithoutAValueStaysAsItWas) {
  Section section = testkit::coordinate_system_section(0);
  section.blocks[0] = Block::rule_alone({4, 1, 0});
  EXPECT_EQ(read(section, 1), 1);
}

TEST(CoordinateSystem, WithAnotherBlockFails) {
  Section section = testkit::coordinate_system_section(0);
  section.blocks.push_back(Block::integer(1));
  const Input input(body_of(section));
  int value = 0;
  EXPECT_EQ(thrown_message([&] { fld::FLDV4_CoordinateSystem(input.stream(), value); }),
            "ERROR IN FLDV4_I_END");
}

}  // namespace
