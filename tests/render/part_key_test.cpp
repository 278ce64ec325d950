// How the entries of a key are arranged in lines.
#include "render/part_key.h"

#include <gtest/gtest.h>
#include <vector>

namespace {

using render::arrange_key;
using Lines = std::vector<std::vector<std::size_t>>;

TEST(PartKey, FillsLines) {
  const render::KeyLines key = arrange_key({40, 50, 20, 90, 10}, 100, 3, 30);
  EXPECT_EQ(key.lines, (Lines{{0, 1}, {2}, {3, 4}}));
  EXPECT_EQ(key.left_out, 0U);
  EXPECT_TRUE(arrange_key({}, 100, 3, 30).lines.empty());
}

TEST(PartKey, LeavesRoomToSayWhatIsLeftOut) {
  const render::KeyLines key = arrange_key({40, 50, 40, 40, 40}, 100, 2, 30);
  EXPECT_EQ(key.lines, (Lines{{0, 1}, {2}}));
  EXPECT_EQ(key.left_out, 2U);
  // Without anything left out no room is needed.
  const render::KeyLines whole = arrange_key({40, 50, 40, 40, 20}, 100, 2, 30);
  EXPECT_EQ(whole.lines, (Lines{{0, 1}, {2, 3, 4}}));
  EXPECT_EQ(whole.left_out, 0U);
}

TEST(PartKey, ShowsAnEntryThatIsWiderThanALine) {
  EXPECT_EQ(arrange_key({150, 30}, 100, 2, 30).lines, (Lines{{0}, {1}}));
}

}  // namespace
