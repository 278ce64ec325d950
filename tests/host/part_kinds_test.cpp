#include "host/part_kinds.h"

#include "gtest/gtest.h"
#include <optional>
#include <string>
#include <vector>

namespace {

// A part with one element of the slot; slot -1 for none.
host::Part part(const std::string& name, int slot) {
  host::Part made;
  made.name = name;
  if (slot >= 0) made.elements[static_cast<std::size_t>(slot)] = 1;
  return made;
}

TEST(PartKinds, FollowTheOrderOfTheParts) {
  std::vector<host::Part> parts = {part("A", 10), part("B", 6), part("C", 26), part("D", -1),
                                   part("ALL_ELEMENTS", 26)};
  EXPECT_EQ(host::set_part_kinds(parts), 1);
  EXPECT_EQ(parts[1].kind, host::PartKind::surface);
  EXPECT_EQ(parts[2].kind, host::PartKind::volume);
  EXPECT_EQ(parts[3].kind, host::PartKind::volume);
  EXPECT_EQ(parts[4].kind, host::PartKind::whole);
  for (const host::Part& made : parts) EXPECT_EQ(made.region_set, 0);
}

TEST(PartKinds, OnlyWholeMeshesTellTheirRegionSetWhenThereAreSeveral) {
  std::vector<host::Part> parts = {part("A", 10), part("C", 26), part("ALL_ELEMENTS", 26),
                                   part("ALL_ELEMENTS", 14)};
  EXPECT_EQ(host::set_part_kinds(parts), 2);
  EXPECT_EQ(parts[0].region_set, std::nullopt);
  EXPECT_EQ(parts[1].region_set, std::nullopt);
  EXPECT_EQ(parts[2].region_set, 0);
  EXPECT_EQ(parts[3].region_set, 1);
}

TEST(PartKinds, OfNoParts) {
  std::vector<host::Part> parts;
  EXPECT_EQ(host::set_part_kinds(parts), 0);
}

}  // namespace
