// The node coordinates of a region set.
#include "format/nodes.h"

#include <gtest/gtest.h>
#include <string>

#include "testkit/mesh.h"
#include "tests/format/input.h"
#include "tests/support/empty_list.h"
#include "tests/support/thrown_message.h"

namespace {

using fld::vfpa2double;
using testkit::Block;
using testkit::Precision;
using testkit::Section;

using Nodes = EmptyList;

testkit::Nodes two_nodes(Precision x, Precision y, Precision z) {
  testkit::Nodes nodes;
  nodes.precision = {x, y, z};
  nodes.add(0.1, 1.5, -2.5);
  nodes.add(3.0, 4.0, 5.0);
  return nodes;
}

testkit::Nodes two_nodes() {
  return two_nodes(Precision::kSingle, Precision::kSingle, Precision::kSingle);
}

fld::smart_ptr<fld::Nodes> read_nodes(const Section& section) {
  const Input input(body_of(section) + kNext);
  auto nodes = fld::FLDV4_Nodes(input.stream());
  EXPECT_EQ(input.rest(), kNext);
  return nodes;
}

std::string nodes_error(const Section& section) {
  const Input input(body_of(section));
  std::string message = thrown_message([&] { fld::FLDV4_Nodes(input.stream()); });
  EXPECT_EQ(fld::memory, nullptr) << "arrays were kept";
  return message;
}

TEST_F(Nodes, GiveTheirCoordinates) {
  const auto nodes = read_nodes(testkit::nodes_section(two_nodes()));
  ASSERT_EQ(nodes->nnode, 2);
  EXPECT_EQ(vfpa2double(nodes->x, 0), 0.100000001490116119384765625);
  EXPECT_EQ(vfpa2double(nodes->y, 0), 1.5);
  EXPECT_EQ(vfpa2double(nodes->z, 0), -2.5);
  EXPECT_EQ(vfpa2double(nodes->x, 1), 3.0);
  EXPECT_EQ(vfpa2double(nodes->y, 1), 4.0);
  EXPECT_EQ(vfpa2double(nodes->z, 1), 5.0);
}

TEST_F(Nodes, EveryAxisKeepsItsPrecision) {
  const auto nodes = read_nodes(
      testkit::nodes_section(two_nodes(Precision::kDouble, Precision::kSingle, Precision::kSingle)));
  EXPECT_EQ(nodes->x.precision, 8);
  EXPECT_EQ(nodes->y.precision, 4);
  EXPECT_EQ(nodes->z.precision, 4);
  EXPECT_EQ(vfpa2double(nodes->x, 0), 0.1);
  EXPECT_EQ(vfpa2double(nodes->y, 1), 4.0);
}

TEST_F(Nodes, MayBeNone) {
  const auto nodes = read_nodes(testkit::nodes_section({}));
  EXPECT_EQ(nodes->nnode, 0);
  EXPECT_EQ(nodes->x.data, nullptr);
  EXPECT_EQ(nodes->z.data, nullptr);
}

TEST_F(Nodes, AnAxisOfAnotherWidthIsAnInvalidType) {
  for (const size_t block : {1U, 2U, 3U}) {
    Section section = testkit::nodes_section(two_nodes());
    section.blocks[block].rule = testkit::Rule{2, 2, 1};
    EXPECT_EQ(nodes_error(section), "THIS FLD FILE HAS AN INVALID DATA TYPE.") << block;
  }
}

TEST_F(Nodes, AWrongCountIsAnError) {
  Section section = testkit::nodes_section(two_nodes());
  section.blocks[0] = Block::integer(-2);
  EXPECT_EQ(nodes_error(section).substr(0, 17), "NEGATIVE COUNT -2");
  section.blocks[0] = Block::integer(0x7fffffff);
  EXPECT_EQ(nodes_error(section).substr(0, 46), "COUNT 2147483647 EXCEEDS THE REST OF THE FILE ");
  section.blocks[0] = Block::integer(3);
  EXPECT_EQ(nodes_error(section), "TOO FEW DATA RECORDS IN A DATA BLOCK.");
}

TEST_F(Nodes, WithMoreOrFewerAxesFail) {
  Section section = testkit::nodes_section(two_nodes());
  section.blocks.push_back(section.blocks.back());
  EXPECT_EQ(nodes_error(section), "ERROR IN FLDV4_I_END");
  section.blocks.resize(3);  // end rule instead of z
  EXPECT_EQ(nodes_error(section), "ERROR IN FLDV4_I_END");
}

TEST_F(Nodes, FreeTheirArrays) {
  { const auto nodes = read_nodes(testkit::nodes_section(two_nodes())); }
  EXPECT_EQ(fld::memory, nullptr);
}

}  // namespace
