// Number of nodes per shape.
#include "format/element_codes.h"

#include <gtest/gtest.h>
#include <limits>
#include <map>

namespace {

using fld::nodes_of_element;
using fld::nodes_of_face;

constexpr int kOdd[] = {
    -1, -34, 256, 1000, 290, std::numeric_limits<int>::max(), std::numeric_limits<int>::min()};

TEST(ElementCodes, GiveTheNodesOfAnElement) {
  const std::map<int, int> nodes = {{23, 3}, {24, 4}, {34, 4}, {35, 5}, {36, 6}, {38, 8}};
  for (int code = 0; code < 300; ++code) {
    EXPECT_EQ(nodes_of_element(code), nodes.contains(code) ? nodes.at(code) : 0) << code;
  }
  for (const int code : kOdd) EXPECT_EQ(nodes_of_element(code), 0) << code;
}

TEST(ElementCodes, GiveTheNodesOfAFace) {
  const std::map<int, int> nodes = {{122, 2}, {133, 3}, {134, 4}};
  for (int code = 0; code < 400; ++code) {
    EXPECT_EQ(nodes_of_face(code), nodes.contains(code) ? nodes.at(code) : 0) << code;
  }
  for (const int code : kOdd) EXPECT_EQ(nodes_of_face(code), 0) << code;
}

}  // namespace
