// Meshes that are turned and shifted keep their shape, others do not.
#include "analysis/rigid_motion.h"

#include "gtest/gtest.h"
#include <array>
#include <cmath>
#include <vector>

namespace {

using analysis::MeshShape;
using Points = std::vector<std::array<double, 3>>;

const Points kPoints = {{0, 0, 0}, {1, 0, 0}, {0, 2, 0}, {0, 0, 3}, {1, 2, 3}, {0.5, 0.25, 1}};

host::Coordinates coordinates(const Points& points) {
  host::Coordinates made;
  for (std::size_t axis = 0; axis < 3; ++axis) {
    made.axes[axis] = host::HostArray(points.size(), 0);
    for (std::size_t i = 0; i < points.size(); ++i)
      made.axes[axis].entries()[i + 1] = static_cast<float>(points[i][axis]);
  }
  return made;
}

TEST(MeshShape, IsKeptByTurnsAndShifts) {
  Points moved;
  for (const auto& [x, y, z] : kPoints)
    moved.push_back({0.6 * x - 0.8 * y + 5, 0.8 * x + 0.6 * y - 7, z + 100});
  EXPECT_TRUE(MeshShape(coordinates(kPoints)).is_kept_by(coordinates(moved)));
  EXPECT_TRUE(MeshShape(coordinates(kPoints)).is_kept_by(coordinates(kPoints)));
}

TEST(MeshShape, IsNotKeptByASingleNode) {
  for (std::size_t node = 0; node < kPoints.size(); ++node) {
    Points moved = kPoints;
    moved[node][1] += 0.01;
    EXPECT_FALSE(MeshShape(coordinates(kPoints)).is_kept_by(coordinates(moved))) << node;
  }
}

TEST(MeshShape, IsNotKeptByStretchingOrOtherNodes) {
  Points stretched = kPoints;
  for (auto& point : stretched) point[2] *= 1.001;
  EXPECT_FALSE(MeshShape(coordinates(kPoints)).is_kept_by(coordinates(stretched)));
  Points fewer(kPoints.begin(), kPoints.end() - 1);
  EXPECT_FALSE(MeshShape(coordinates(kPoints)).is_kept_by(coordinates(fewer)));
  Points undefined = kPoints;
  undefined[3][0] = std::nan("");
  EXPECT_FALSE(MeshShape(coordinates(kPoints)).is_kept_by(coordinates(undefined)));
}

TEST(MeshShape, OfNothingOrOneNode) {
  EXPECT_TRUE(MeshShape(coordinates({})).is_kept_by(coordinates({})));
  EXPECT_TRUE(MeshShape(coordinates({{1, 2, 3}})).is_kept_by(coordinates({{9, 9, 9}})));
  EXPECT_FALSE(MeshShape(coordinates({})).is_kept_by(coordinates({{9, 9, 9}})));
}

}  // namespace
