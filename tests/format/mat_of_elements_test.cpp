// The material numbers of the elements.
#include "format/mat_of_elements.h"

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

using MatOfElements = EmptyList;

fld::smart_ptr<fld::MatOfElements> read_materials(const Section& section) {
  const Input input(body_of(section) + kNext);
  auto materials = fld::FLDV4_MatOfElements(input.stream());
  EXPECT_EQ(input.rest(), kNext);
  return materials;
}

std::string materials_error(const Section& section) {
  const Input input(body_of(section));
  std::string message = thrown_message([&] { fld::FLDV4_MatOfElements(input.stream()); });
  EXPECT_EQ(fld::memory, nullptr) << "the array was kept";
  return message;
}

TEST_F(MatOfElements, GiveOneNumberPerElement) {
  const auto materials = read_materials(testkit::materials_section({1, 1, 2, 7}));
  ASSERT_EQ(materials->nelem, 4);
  EXPECT_EQ(std::vector<int>(materials->mat, materials->mat + 4), (std::vector<int>{1, 1, 2, 7}));
}

TEST_F(MatOfElements, AreCopiedUnchanged) {
  // The range of the numbers is checked when the geometry is assembled.
  const auto materials = read_materials(testkit::materials_section({-5, 10000, 0}));
  EXPECT_EQ(std::vector<int>(materials->mat, materials->mat + 3), (std::vector<int>{-5, 10000, 0}));
}

TEST_F(MatOfElements, MayBeNone) {
  const auto materials = read_materials(testkit::materials_section({}));
  EXPECT_EQ(materials->nelem, 0);
  EXPECT_EQ(materials->mat, nullptr);
}

TEST_F(MatOfElements, AWrongCountIsAnError) {
  Section section = testkit::materials_section({1, 1, 2, 7});
  section.blocks[0] = Block::integer(-4);
  EXPECT_EQ(materials_error(section).substr(0, 17), "NEGATIVE COUNT -4");
  section.blocks[0] = Block::integer(100000);
  EXPECT_EQ(materials_error(section).substr(0, 42), "COUNT 100000 EXCEEDS THE REST OF THE FILE ");
  section.blocks[0] = Block::integer(5);
  EXPECT_EQ(materials_error(section), "TOO FEW DATA RECORDS IN A DATA BLOCK.");
}

TEST_F(MatOfElements, WithAnotherBlockFail) {
  Section section = testkit::materials_section({1, 1});
  section.blocks.push_back(Block::integer(1));
  EXPECT_EQ(materials_error(section), "ERROR IN FLDV4_I_END");
}

TEST_F(MatOfElements, FreeTheirArray) {
  { const auto materials = read_materials(testkit::materials_section({1})); }
  EXPECT_EQ(fld::memory, nullptr);
}

}  // namespace
