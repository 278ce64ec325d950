// The element list of a region set.
#include "format/elements.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "testkit/mesh.h"
#include "tests/format/input.h"
#include "tests/support/empty_list.h"
#include "tests/support/thrown_message.h"

namespace {

using testkit::Block;
using testkit::Section;

using Elements = EmptyList;

testkit::Elements tetrahedron_and_pyramid() {
  testkit::Elements elements;
  elements.add(testkit::kTetrahedron, {0, 1, 2, 3});
  elements.add(testkit::kPyramid, {4, 5, 6, 7, 8});
  return elements;
}

fld::smart_ptr<fld::Elements> read_elements(const Section& section) {
  const Input input(body_of(section) + kNext);
  auto elements = fld::FLDV4_Elements(input.stream());
  EXPECT_EQ(input.rest(), kNext);
  return elements;
}

std::string elements_error(const Section& section) {
  const Input input(body_of(section));
  std::string message = thrown_message([&] { fld::FLDV4_Elements(input.stream()); });
  EXPECT_EQ(fld::memory, nullptr) << "arrays were kept";
  return message;
}

Section with_block(size_t number, const Block& block) {
  Section section = testkit::elements_section(tetrahedron_and_pyramid());
  section.blocks[number] = block;
  return section;
}

TEST_F(Elements, GiveTypesAndConnectivity) {
  const auto elements = read_elements(testkit::elements_section(tetrahedron_and_pyramid()));
  ASSERT_EQ(elements->nelem, 2);
  EXPECT_EQ(std::vector<int>(elements->type, elements->type + 2), (std::vector<int>{34, 35}));
  ASSERT_EQ(elements->nconn, 9);
  EXPECT_EQ(std::vector<int>(elements->conn, elements->conn + 9),
            (std::vector<int>{0, 1, 2, 3, 4, 5, 6, 7, 8}));
}

TEST_F(Elements, AreNotCountedByTypeYet) {
  const auto elements = read_elements(testkit::elements_section(tetrahedron_and_pyramid()));
  EXPECT_EQ(elements->ntri, 0);
  EXPECT_EQ(elements->nquad, 0);
  EXPECT_EQ(elements->ntet, 0);
  EXPECT_EQ(elements->npyr, 0);
  EXPECT_EQ(elements->nprism, 0);
  EXPECT_EQ(elements->nhex, 0);
}

TEST_F(Elements, TheConnectivitysLengthMayTakeFourBytes) {
  EXPECT_EQ(read_elements(testkit::elements_section(tetrahedron_and_pyramid(), 4))->nconn, 9);
  EXPECT_EQ(read_elements(testkit::elements_section(tetrahedron_and_pyramid(), 8))->nconn, 9);
}

TEST_F(Elements, MayBeSpreadOverRecords) {
  Section section = testkit::elements_section(tetrahedron_and_pyramid());
  section.blocks[1] = section.blocks[1].cut(1);
  section.blocks[3] = section.blocks[3].cut(4);
  const auto elements = read_elements(section);
  EXPECT_EQ(elements->type[1], 35);
  EXPECT_EQ(elements->conn[8], 8);
}

TEST_F(Elements, MayBeNone) {
  const auto elements = read_elements(testkit::elements_section({}));
  EXPECT_EQ(elements->nelem, 0);
  EXPECT_EQ(elements->type, nullptr);
  EXPECT_EQ(elements->nconn, 0);
  EXPECT_EQ(elements->conn, nullptr);
}

TEST_F(Elements, ALengthThatDoesNotFitTheTypesIsCarriedAsRead) {
  testkit::Elements elements = tetrahedron_and_pyramid();
  elements.conn = {7};
  const auto read_back = read_elements(testkit::elements_section(elements));
  EXPECT_EQ(read_back->nelem, 2);
  ASSERT_EQ(read_back->nconn, 1);
  EXPECT_EQ(read_back->conn[0], 7);
}

TEST_F(Elements, NegativeCountsAreErrors) {
  EXPECT_EQ(elements_error(with_block(0, Block::integer(-1))).substr(0, 17), "NEGATIVE COUNT -1");
  EXPECT_EQ(elements_error(with_block(2, Block::long_integer(-9, 8))).substr(0, 17), "NEGATIVE COUNT -9");
  EXPECT_EQ(elements_error(with_block(2, Block::long_integer(-9, 4))).substr(0, 17), "NEGATIVE COUNT -9");
}

TEST_F(Elements, CountsBeyondTheFileAreErrors) {
  EXPECT_EQ(elements_error(with_block(0, Block::integer(0x7fffffff))).substr(0, 46),
            "COUNT 2147483647 EXCEEDS THE REST OF THE FILE ");
  EXPECT_EQ(elements_error(with_block(2, Block::long_integer(int64_t{1} << 40))).substr(0, 49),
            "COUNT 1099511627776 EXCEEDS THE REST OF THE FILE ");
  EXPECT_EQ(elements_error(with_block(2, Block::long_integer(INT64_MAX))).substr(0, 26),
            "COUNT 9223372036854775807 ");
}

TEST_F(Elements, ACountThatTheBlockDoesNotMatchIsAnError) {
  EXPECT_EQ(elements_error(with_block(0, Block::integer(3))), "TOO FEW DATA RECORDS IN A DATA BLOCK.");
  EXPECT_NE(elements_error(with_block(0, Block::integer(1))), "nothing was thrown");
  EXPECT_NE(elements_error(with_block(0, Block::integer(0))), "nothing was thrown");
  EXPECT_EQ(elements_error(with_block(2, Block::long_integer(10))), "TOO FEW DATA RECORDS IN A DATA BLOCK.");
}

TEST_F(Elements, WithFewerBlocksThanTheLayoutFail) {
  for (size_t blocks = 0; blocks < 4; ++blocks) {
    Section section = testkit::elements_section(tetrahedron_and_pyramid());
    section.blocks.resize(blocks);
    EXPECT_EQ(elements_error(section), "ERROR IN FLDV4_I_END") << blocks;
  }
}

TEST_F(Elements, WithoutAnEndRuleFail) {
  Section section = testkit::elements_section(tetrahedron_and_pyramid());
  section.blocks.push_back(Block::integer(1));
  EXPECT_EQ(elements_error(section), "ERROR IN FLDV4_I_END");
  section = testkit::elements_section(tetrahedron_and_pyramid());
  section.end_rule = testkit::Rule{0, 5, 0};
  EXPECT_EQ(elements_error(section), "ERROR IN FLDV4_I_END");
}

TEST_F(Elements, FreeTheirArrays) {
  { const auto elements = read_elements(testkit::elements_section(tetrahedron_and_pyramid())); }
  EXPECT_EQ(fld::memory, nullptr);
}

}  // namespace
