#include "render/layout.h"

#include <array>
#include <gtest/gtest.h>

namespace {

using render::Area;
using render::Layout;

bool overlap(const Area& a, const Area& b) {
  constexpr double kRounding = 1e-9;
  return a.left + kRounding < b.right() && b.left + kRounding < a.right() && a.bottom + kRounding < b.top() &&
         b.bottom + kRounding < a.top();
}

void expect_separate(int width, int height, int lines) {
  const Layout layout = render::make_layout(width, height, lines);
  const std::array<Area, 4> areas = {layout.title, layout.scene, layout.axes, layout.legend};
  for (std::size_t i = 0; i < areas.size(); ++i) {
    if (i != 1 && !layout.is_annotated) continue;
    EXPECT_GE(areas[i].left, 0) << width << "x" << height << " " << i;
    EXPECT_GE(areas[i].bottom, 0) << width << "x" << height << " " << i;
    EXPECT_LE(areas[i].right(), width) << width << "x" << height << " " << i;
    EXPECT_LE(areas[i].top(), height) << width << "x" << height << " " << i;
    for (std::size_t j = i + 1; j < areas.size() && layout.is_annotated; ++j)
      EXPECT_FALSE(overlap(areas[i], areas[j])) << width << "x" << height << " " << i << " " << j;
  }
}

TEST(Layout, NothingOverlapsInAnyPicture) {
  expect_separate(600, 1200, 1);
  expect_separate(200, 2000, 1);
  for (int width = 64; width <= 4096; width += 37) {
    for (int height = 64; height <= 4096; height += 41) {
      for (const int lines : {0, 1, 5}) expect_separate(width, height, lines);
    }
  }
}

TEST(Layout, LeavesRoomForThePartsAndTheColours) {
  for (const auto& [width, height] : {std::pair(120, 120), std::pair(120, 4096), std::pair(4096, 120)}) {
    const Layout layout = render::make_layout(width, height, 1);
    EXPECT_TRUE(layout.is_annotated);
    EXPECT_GE(layout.scene.height, 40) << width << "x" << height;
    EXPECT_GE(layout.legend.width, 60) << width << "x" << height;
  }
}

TEST(Layout, SmallPicturesHaveThePartsAlone) {
  EXPECT_FALSE(render::make_layout(119, 400, 1).is_annotated);
  EXPECT_FALSE(render::make_layout(400, 119, 1).is_annotated);
  EXPECT_GT(render::make_layout(64, 64, 1).scene.height, 50);
}

}  // namespace
