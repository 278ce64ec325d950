// Copy-on-write lists.
#include "dataset/shared_list.h"

#include <gtest/gtest.h>
#include <vector>

namespace fld {
namespace {

std::vector<int> entries(const SharedList<int>& list) {
  return {list.begin(), list.end()};
}

TEST(SharedList, IsEmptyAtFirst) {
  const SharedList<int> list;
  EXPECT_TRUE(list.empty());
  EXPECT_EQ(0U, list.size());
  EXPECT_EQ(list.begin(), list.end());
}

TEST(SharedList, CopiesHoldTheSameEntries) {
  SharedList<int> list;
  list.own() = {3, 5};
  const SharedList<int> copy = list;
  EXPECT_EQ(list.begin(), copy.begin());
  EXPECT_EQ((std::vector<int>{3, 5}), entries(copy));
  EXPECT_EQ(5, copy[1]);
}

TEST(SharedList, ChangesAreNotSeenByCopies) {
  SharedList<int> list;
  list.own() = {3, 5};
  SharedList<int> copy = list;
  copy.own().push_back(7);
  list.own().pop_back();
  EXPECT_EQ((std::vector<int>{3}), entries(list));
  EXPECT_EQ((std::vector<int>{3, 5, 7}), entries(copy));
}

TEST(SharedList, AppendsBehindWhatItHolds) {
  SharedList<int> list;
  SharedList<int> more;
  more.own() = {3, 5};
  list.append(more);
  EXPECT_EQ(more.begin(), list.begin()) << "nothing to append to: the entries are shared";
  list.append(more);
  EXPECT_EQ((std::vector<int>{3, 5, 3, 5}), entries(list));
  EXPECT_EQ((std::vector<int>{3, 5}), entries(more));
}

}  // namespace
}  // namespace fld
