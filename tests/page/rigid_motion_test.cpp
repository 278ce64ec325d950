#include "page/rigid_motion.h"

#include "gtest/gtest.h"
#include <vector>

namespace {

using page::find_rigid_motion;
using Points = std::vector<float>;

const Points kPoints = {0, 0, 0, 2, 0, 0, 0, 1, 0, 0, 0, 3, 1, 1, 1};

// A quarter of a turn about z, and 10 along x.
Points turned(const Points& points) {
  Points moved;
  for (std::size_t i = 0; i < points.size(); i += 3)
    moved.insert(moved.end(), {10 - points[i + 1], points[i], points[i + 2]});
  return moved;
}

TEST(PageRigidMotion, FindsTurnsAndShifts) {
  const auto matrix = find_rigid_motion(kPoints, turned(kPoints), 1e-5);
  ASSERT_TRUE(matrix);
  const page::Matrix expected = {0, -1, 0, 10, 1, 0, 0, 0, 0, 0, 1, 0};
  for (std::size_t i = 0; i < expected.size(); ++i) EXPECT_NEAR((*matrix)[i], expected[i], 1e-9) << i;
}

TEST(PageRigidMotion, IsNoneWhenOnePointStaysBehind) {
  Points moved = turned(kPoints);
  moved.back() += 0.001F;
  EXPECT_FALSE(find_rigid_motion(kPoints, moved, 1e-5));
  EXPECT_TRUE(find_rigid_motion(kPoints, moved, 1e-2));
}

TEST(PageRigidMotion, IsNoneWhenMirroredOrStretched) {
  Points mirrored = kPoints;
  Points stretched = kPoints;
  for (std::size_t i = 0; i < kPoints.size(); i += 3) {
    mirrored[i] = -mirrored[i];
    stretched[i] *= 1.01F;
  }
  EXPECT_FALSE(find_rigid_motion(kPoints, mirrored, 1e-5));
  EXPECT_FALSE(find_rigid_motion(kPoints, stretched, 1e-5));
}

TEST(PageRigidMotion, IsNoneForOtherCounts) {
  EXPECT_FALSE(find_rigid_motion(kPoints, {0, 0, 0}, 1));
  EXPECT_FALSE(find_rigid_motion({0, 0, 0, 1, 0, 0}, {0, 0, 0, 1, 0, 0}, 1));
}

// A point among thousands that is not one of those the motion is found from.
TEST(PageRigidMotion, ComparesEveryPoint) {
  Points points;
  for (int i = 0; i < 5000; ++i) {
    const auto t = static_cast<float>(i) / 5000;
    points.insert(points.end(), {t, t * t, t * t * t});
  }
  Points moved = turned(points);
  ASSERT_TRUE(find_rigid_motion(points, moved, 1e-5));
  moved[3 * 2501] += 0.1F;
  EXPECT_FALSE(find_rigid_motion(points, moved, 1e-5));
}

}  // namespace
