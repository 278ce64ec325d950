// Points that are found again by their coordinates.
#include "analysis/point_table.h"

#include "gtest/gtest.h"
#include <array>
#include <vector>

namespace {

using analysis::PointTable;

host::Coordinates coordinates_of(const std::vector<std::array<float, 3>>& points) {
  host::Coordinates coordinates;
  for (std::size_t axis = 0; axis < 3; ++axis) {
    coordinates.axes[axis] = host::HostArray(points.size(), 0);
    for (std::size_t i = 0; i < points.size(); ++i) coordinates.axes[axis].entries()[i + 1] = points[i][axis];
  }
  return coordinates;
}

TEST(PointTable, FindsEveryNodeOfAPlace) {
  const host::Coordinates nodes = coordinates_of({{1, 2, 3}, {0, 0, 0}, {1, 2, 3}, {3, 2, 1}, {1, 2, 3}});
  const PointTable table(nodes);
  EXPECT_EQ(table.find(1, 2, 3), 0);
  EXPECT_EQ(table.next(0), 2);
  EXPECT_EQ(table.next(2), 4);
  EXPECT_EQ(table.next(4), PointTable::kNone);
  EXPECT_EQ(table.find(3, 2, 1), 3);
  EXPECT_EQ(table.next(3), PointTable::kNone);
  EXPECT_EQ(table.find(1, 2, 3.0000002F), PointTable::kNone);
}

TEST(PointTable, BothZerosAreTheSame) {
  const host::Coordinates nodes = coordinates_of({{-0.0F, 1, 0}});
  EXPECT_EQ(PointTable(nodes).find(0, 1, -0.0F), 0);
}

TEST(PointTable, MayBeEmpty) {
  const host::Coordinates nodes = coordinates_of({});
  EXPECT_EQ(PointTable(nodes).find(0, 0, 0), PointTable::kNone);
}

TEST(PointTable, FindsTheNodesOfAnotherPart) {
  const host::Coordinates nodes = coordinates_of({{1, 0, 0}, {2, 0, 0}});
  const host::Coordinates others = coordinates_of({{2, 0, 0}, {5, 0, 0}, {1, 0, 0}});
  EXPECT_EQ(PointTable(nodes).find_all(others), (std::vector<std::int32_t>{1, PointTable::kNone, 0}));
}

}  // namespace
