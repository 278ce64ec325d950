// The values of quantities.
#include "format/quantity.h"

#include <gtest/gtest.h>
#include <limits>
#include <string>
#include <vector>

#include "testkit/quantity.h"
#include "tests/format/input.h"
#include "tests/support/empty_list.h"
#include "tests/support/thrown_message.h"

namespace {

using testkit::Block;
using testkit::Precision;
using testkit::Section;

using Scalar = EmptyList;
using Vector = EmptyList;

Section scalar(Precision precision = Precision::kSingle) {
  return testkit::scalar_section(
      {.name = "p", .label = "Pressure", .values = {0.1, 2.0, -3.0}, .precision = precision});
}

Section vector() {
  return testkit::vector_section({.name = "U",
                                  .label = "Velocity",
                                  .x = {0.1, 2.0},
                                  .y = {0.1, 4.0},
                                  .z = {5.0, 6.0},
                                  .precision = {Precision::kSingle, Precision::kDouble, Precision::kSingle},
                                  .leading = -9});
}

fld::smart_ptr<fld::Scalar> read_scalar(const Section& section) {
  const Input input(body_of(section) + kNext);
  auto scalar = fld::FLDV4_Scalar(input.stream());
  EXPECT_EQ(input.rest(), kNext);
  return scalar;
}

fld::smart_ptr<fld::Vector> read_vector(const Section& section) {
  const Input input(body_of(section) + kNext);
  auto vector = fld::FLDV4_Vector(input.stream());
  EXPECT_EQ(input.rest(), kNext);
  return vector;
}

std::string scalar_error(const Section& section) {
  const Input input(body_of(section));
  std::string message = thrown_message([&] { fld::FLDV4_Scalar(input.stream()); });
  EXPECT_EQ(fld::memory, nullptr) << "arrays were kept";
  return message;
}

std::string vector_error(const Section& section) {
  const Input input(body_of(section));
  std::string message = thrown_message([&] { fld::FLDV4_Vector(input.stream()); });
  EXPECT_EQ(fld::memory, nullptr) << "arrays were kept";
  return message;
}

std::vector<double> values_of(const fld::VFPA& array, int n) {
  std::vector<double> values(static_cast<size_t>(n));
  for (int i = 0; i < n; ++i) values[static_cast<size_t>(i)] = fld::vfpa2double(array, i);
  return values;
}

TEST_F(Scalar, GivesItsValuesInTheirPrecision) {
  const auto singles = read_scalar(scalar());
  EXPECT_EQ(singles->n, 3);
  EXPECT_EQ(singles->values.precision, 4);
  EXPECT_EQ(values_of(singles->values, 3), (std::vector<double>{0.100000001490116119384765625, 2.0, -3.0}));
  const auto doubles = read_scalar(scalar(Precision::kDouble));
  EXPECT_EQ(doubles->values.precision, 8);
  EXPECT_EQ(values_of(doubles->values, 3), (std::vector<double>{0.1, 2.0, -3.0}));
}

TEST_F(Scalar, KeepsItsLabelWithTheBlanks) {
  EXPECT_EQ(std::string(read_scalar(scalar())->text), "Pressure" + std::string(24, ' '));
}

TEST_F(Scalar, ALongerLabelIsReadToItsEndAndCut) {
  Section section = scalar();
  section.blocks[0] = Block::characters(std::string(1000, 'x'));
  const auto read = read_scalar(section);
  EXPECT_EQ(std::string(read->text), std::string(32, 'x'));
  EXPECT_EQ(values_of(read->values, 3)[1], 2.0);
}

TEST_F(Scalar, MayHaveNoValues) {
  const auto read = read_scalar(testkit::scalar_section({.name = "p", .label = "P", .values = {}}));
  EXPECT_EQ(read->n, 0);
  EXPECT_EQ(read->values.data, nullptr);
}

TEST_F(Scalar, WrongCountsAreErrors) {
  Section section = scalar();
  section.blocks[1] = Block::integer(-3);
  EXPECT_EQ(scalar_error(section).substr(0, 17), "NEGATIVE COUNT -3");
  section.blocks[1] = Block::integer(0x7fffffff);
  EXPECT_EQ(scalar_error(section).substr(0, 46), "COUNT 2147483647 EXCEEDS THE REST OF THE FILE ");
  section.blocks[1] = Block::integer(4);
  EXPECT_EQ(scalar_error(section), "TOO FEW DATA RECORDS IN A DATA BLOCK.");
}

TEST_F(Scalar, ValuesOfAnotherWidthAreAnInvalidType) {
  Section section = scalar();
  section.blocks[2].rule = testkit::Rule{2, 3, 1};
  EXPECT_EQ(scalar_error(section), "THIS FLD FILE HAS AN INVALID DATA TYPE.");
}

TEST_F(Scalar, WithAnotherBlockFails) {
  Section section = scalar();
  section.blocks.push_back(Block::integer(1));
  EXPECT_EQ(scalar_error(section), "ERROR IN FLDV4_I_END");
}

TEST_F(Scalar, FreesItsValues) {
  { const auto read = read_scalar(scalar()); }
  EXPECT_EQ(fld::memory, nullptr);
}

TEST_F(Scalar, StartsEmpty) {
  const fld::Scalar empty;
  EXPECT_EQ(empty.n, 0);
  EXPECT_STREQ(empty.text, "");
  EXPECT_EQ(empty.values.data, nullptr);
}

TEST_F(Vector, GivesItsComponentsInTheirPrecisions) {
  const auto read = read_vector(vector());
  EXPECT_EQ(read->leading, -9);
  EXPECT_EQ(read->n, 2);
  EXPECT_EQ(read->components[0].precision, 4);
  EXPECT_EQ(read->components[1].precision, 8);
  EXPECT_EQ(read->components[2].precision, 4);
  EXPECT_EQ(values_of(read->components[0], 2), (std::vector<double>{0.100000001490116119384765625, 2.0}));
  EXPECT_EQ(values_of(read->components[1], 2), (std::vector<double>{0.1, 4.0}));
  EXPECT_EQ(values_of(read->components[2], 2), (std::vector<double>{5.0, 6.0}));
}

TEST_F(Vector, KeepsItsLabelWithTheBlanks) {
  EXPECT_EQ(std::string(read_vector(vector())->text), "Velocity" + std::string(24, ' '));
}

TEST_F(Vector, WrongCountsAreErrors) {
  Section section = vector();
  section.blocks[2] = Block::integer(-3);
  EXPECT_EQ(vector_error(section).substr(0, 17), "NEGATIVE COUNT -3");
  section.blocks[2] = Block::integer(0x7fffffff);
  EXPECT_EQ(vector_error(section).substr(0, 46), "COUNT 2147483647 EXCEEDS THE REST OF THE FILE ");
}

TEST_F(Vector, AShortComponentFreesTheOthers) {
  for (const size_t block : {3U, 4U, 5U}) {
    Section section = vector();
    section.blocks[block] = Block::reals({1.0});
    EXPECT_EQ(vector_error(section), "TOO FEW DATA RECORDS IN A DATA BLOCK.") << block;
  }
}

TEST_F(Vector, WithAComponentTooManyFails) {
  Section section = vector();
  section.blocks.push_back(section.blocks.back());
  EXPECT_EQ(vector_error(section), "ERROR IN FLDV4_I_END");
}

TEST_F(Vector, FreesItsComponents) {
  { const auto read = read_vector(vector()); }
  EXPECT_EQ(fld::memory, nullptr);
}

}  // namespace
