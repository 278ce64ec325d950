// Who owns what, and which numbers nodes get.
#include "parallel/partition.h"

#include <gtest/gtest.h>
#include <random>
#include <set>

#include "parallel/node_set.h"

namespace parallel_test {
namespace {

using parallel::Partition;
using NodeRun = parallel::Run;

TEST(Partitions, GiveEveryElementToOneOwner) {
  for (const int owners : {1, 2, 3, 5, 7}) {
    for (const std::int64_t elements : {0, 1, 2, 3, 10, 16}) {
      const Partition partition(elements, owners);
      std::int64_t next = 0;
      for (int owner = 0; owner < owners; ++owner) {
        EXPECT_EQ(partition.of(owner).first, next);
        next = partition.of(owner).last;
        for (std::int64_t e = partition.of(owner).first; e < next; ++e)
          EXPECT_EQ(partition.owner_of(e), owner);
      }
      EXPECT_EQ(next, elements);
    }
  }
}

// 2^40 elements on 1,000 ranks.
TEST(Partitions, CountBeyond32Bits) {
  const std::int64_t elements = std::int64_t{1} << 40;
  const Partition partition(elements, 1000);
  EXPECT_EQ(partition.of(999).last, elements);
  for (int owner = 0; owner < 1000; owner += 37) {
    EXPECT_EQ(partition.owner_of(partition.of(owner).first), owner);
    EXPECT_EQ(partition.owner_of(partition.of(owner).last - 1), owner);
  }
}

TEST(Partitions, CutRunsAtTheOwnersEnds) {
  const Partition partition(10, 3);  // 0-2, 3-5, 6-9
  std::vector<std::pair<int, NodeRun>> pieces;
  parallel::for_each_owned(partition, NodeRun{2, 6},
                           [&](int owner, NodeRun run) { pieces.emplace_back(owner, run); });
  const std::vector<std::pair<int, NodeRun>> expected = {{0, {2, 1}}, {1, {3, 3}}, {2, {6, 2}}};
  EXPECT_EQ(pieces, expected);
}

TEST(NodeSets, AreTheNodesOfTheCornersEachOnce) {
  const std::vector<std::int32_t> corners = {7, 3, parallel::kNoNode, 4, 7, 200};
  const parallel::NodeSet set = parallel::nodes_of(corners);
  EXPECT_EQ(set.count, 4);
  EXPECT_EQ(set.runs, (std::vector<NodeRun>{{3, 2}, {7, 1}, {200, 1}}));
  std::vector<std::int32_t> numbered = {7, 3, 4, 7, 200};
  parallel::number_corners(set, numbered);
  EXPECT_EQ(numbered, (std::vector<std::int32_t>{2, 0, 1, 2, 3}));
}

TEST(NodeSets, OfRandomCornersAreSortedSets) {
  std::mt19937 random(1);
  for (int round = 0; round < 200; ++round) {
    const unsigned spread = 1U << (random() % 20);
    const auto base = static_cast<std::int32_t>(random() % 2 == 0 ? random() % 1000 : 0x7FF00000U);
    std::vector<std::int32_t> corners(1 + random() % 500);
    for (std::int32_t& corner : corners) corner = base + static_cast<std::int32_t>(random() % spread);
    const std::set<std::int32_t> expected(corners.begin(), corners.end());
    const parallel::NodeSet set = parallel::nodes_of(corners);
    std::vector<std::int32_t> listed;
    for (const NodeRun run : set.runs) {
      for (std::int32_t i = 0; i < run.count; ++i) listed.push_back(run.first + i);
    }
    ASSERT_EQ(listed, std::vector<std::int32_t>(expected.begin(), expected.end()));
    std::vector<std::int32_t> numbered = corners;
    parallel::number_corners(set, numbered);
    for (std::size_t i = 0; i < corners.size(); ++i)
      ASSERT_EQ(listed[static_cast<std::size_t>(numbered[i])], corners[i]);
  }
}

}  // namespace
}  // namespace parallel_test
