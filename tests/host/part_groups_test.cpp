#include "host/part_groups.h"

#include "gtest/gtest.h"
#include <string>
#include <vector>

namespace {

TEST(PartGroups, GroupsHoldTheirPartsAndPlainPartsAreLeftOut) {
  const auto groups = host::parse_part_groups(
      "<?xml version=\"1.0\" encoding=\"shift_jis\"?>\n<CEImetadata version=\"1.0\">\n  <parts>\n    "
      "<partlist>\n"
      "    <group name=\"Grouping_Regions\">\n        <part name=\"&amp;VFG_A\"></part>\n    </group>\n"
      "    <group name=\"Undefined_Regions\">\n       <part name=\"@A\"></part>\n"
      "       <part name=\"@B\"></part>\n    </group>\n"
      "      <part name=\"WALL\"></part>\n    </partlist>\n  </parts>\n</CEImetadata>");
  ASSERT_EQ(groups.size(), 2U);
  EXPECT_EQ(groups[0].name, "Grouping_Regions");
  EXPECT_EQ(groups[0].parts, std::vector<std::string>{"&VFG_A"});
  EXPECT_EQ(groups[1].name, "Undefined_Regions");
  EXPECT_EQ(groups[1].parts, (std::vector<std::string>{"@A", "@B"}));
}

TEST(PartGroups, NamesMayHoldQuotesAndAngleBrackets) {
  const auto groups =
      host::parse_part_groups("<group name=\"G\">\n<part name=\"@a\"b<c>&d\"></part>\n</group>\n");
  ASSERT_EQ(groups.size(), 1U);
  EXPECT_EQ(groups[0].parts, std::vector<std::string>{"@a\"b<c>&d"});
}

TEST(PartGroups, NoneInAnEmptyText) {
  EXPECT_TRUE(host::parse_part_groups("").empty());
}

}  // namespace
