// The index entries of quantity sections.
#include "format/quantity_index.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <limits>
#include <string>
#include <vector>

#include "format/data_block.h"
#include "format/record.h"
#include "testkit/file_writer.h"
#include "testkit/quantity.h"
#include "testkit/temporary_directory.h"
#include "tests/format/input.h"
#include "tests/support/empty_list.h"
#include "tests/support/thrown_message.h"

namespace {

using testkit::Block;
using testkit::Precision;
using testkit::Section;

using ScalarIndex = EmptyList;
using VectorIndex = EmptyList;

Section indexed_scalar(const std::string& name = "pressure", const std::string& label = "p") {
  return testkit::scalar_section({.name = name, .label = label, .values = {1.0, 2.0, 3.0, 4.0, 5.0}});
}

Section indexed_vector() {
  return testkit::vector_section({.name = "velocity",
                                  .label = "U",
                                  .x = {1.0, 2.0},
                                  .y = {3.0, 4.0},
                                  .z = {5.0, 6.0},
                                  .precision = {Precision::kSingle, Precision::kDouble, Precision::kSingle}});
}

Section without_z(Section section) {
  section.blocks.pop_back();
  return section;
}

fld::FLDTITLE_Scalar index(const Section& section, long offset = 0) {
  const Input input(body_of(section) + kNext);
  std::vector<fld::FLDTITLE_Scalar> list;
  fld::FLDV4_Scalar_SEEK(input.stream(), offset, section.title.payload().c_str(), list);
  EXPECT_EQ(input.rest(), kNext);
  return list.at(0);
}

fld::FLDTITLE_Vector index(const Section& section, int dimension, long offset = 0) {
  const Input input(body_of(section) + kNext);
  std::vector<fld::FLDTITLE_Vector> list;
  fld::FLDV4_Vector_SEEK(input.stream(), offset, section.title.payload().c_str(), list, dimension);
  EXPECT_EQ(input.rest(), kNext);
  return list.at(0);
}

// Another title follows the section.
std::string scalar_index_error(const Section& section) {
  const Input input(body_of(section) + bytes_of(testkit::Title("OverlapEnd")));
  std::vector<fld::FLDTITLE_Scalar> list;
  return thrown_message(
      [&] { fld::FLDV4_Scalar_SEEK(input.stream(), 0, section.title.payload().c_str(), list); });
}

std::string vector_index_error(const Section& section, int dimension) {
  const Input input(body_of(section) + bytes_of(testkit::Title("OverlapEnd")));
  std::vector<fld::FLDTITLE_Vector> list;
  return thrown_message(
      [&] { fld::FLDV4_Vector_SEEK(input.stream(), 0, section.title.payload().c_str(), list, dimension); });
}

TEST_F(ScalarIndex, GivesNameLabelAndOffset) {
  const fld::FLDTITLE_Scalar entry = index(indexed_scalar("pressure", "Pa"), 5000000000);
  EXPECT_STREQ(entry.m_name, "pressure");
  EXPECT_STREQ(entry.m_label, "Pa");
  EXPECT_EQ(entry.m_seek, 5000000000);
}

TEST_F(ScalarIndex, EntriesAreZeroBehindTheirTexts) {
  const fld::FLDTITLE_Scalar entry = index(indexed_scalar("pressure", "Pa"));
  EXPECT_EQ(std::string(entry.m_name, 33), "pressure" + std::string(25, '\0'));
  EXPECT_EQ(std::string(entry.m_label, 39), "Pa" + std::string(37, '\0'));
}

TEST_F(ScalarIndex, ANameMayFillItsTitle) {
  EXPECT_STREQ(index(indexed_scalar("abcdefghijklmnopqrstuv")).m_name, "abcdefghijklmnopqrstuv");
}

TEST_F(ScalarIndex, ANameMayBeEmptyOrHaveBlanksInside) {
  EXPECT_STREQ(index(indexed_scalar("")).m_name, "");
  EXPECT_STREQ(index(indexed_scalar(" mass fraction")).m_name, " mass fraction");
}

TEST_F(ScalarIndex, ANameEndsAtANulInTheTitle) {
  Section section = indexed_scalar();
  section.title = testkit::Title::exactly(std::string("LS_Scalar:temp\0rest             ", 32));
  EXPECT_STREQ(index(section).m_name, "temp");
}

TEST_F(ScalarIndex, ALabelMayFillItsField) {
  const std::string label = "A label of thirty-two characters";
  ASSERT_EQ(label.size(), 32U);
  EXPECT_EQ(index(indexed_scalar("p", label)).m_label, label);
}

TEST_F(ScalarIndex, ALongerLabelIsReadToItsEndAndCut) {
  for (const size_t length : {33U, 38U, 39U, 80U, 5000U}) {
    Section section = indexed_scalar();
    section.blocks[0] = Block::characters(std::string(length, 'x'));
    EXPECT_EQ(index(section).m_label, std::string(32, 'x'));
  }
}

TEST_F(ScalarIndex, AShorterLabelIsTakenAsItIs) {
  Section section = indexed_scalar();
  section.blocks[0] = Block::characters("Pa");
  EXPECT_STREQ(index(section).m_label, "Pa");
}

TEST_F(ScalarIndex, ValuesAreSteppedOverWhateverTheirRecordsAndWidth) {
  Section section = indexed_scalar();
  for (const int per_record : {1, 2, 3, 5}) {
    section.blocks[2] = Block::reals({1.0, 2.0, 3.0, 4.0, 5.0}, Precision::kDouble).cut(per_record);
    index(section);
  }
  section.blocks[2].rule = testkit::Rule{16, 1, 1};
  index(section);
}

TEST_F(ScalarIndex, ValuesAreNotReadAndTheirCountIsNotEither) {
  Section section = indexed_scalar();
  section.blocks[1] = Block::integer(std::numeric_limits<int>::min());
  index(section);
  EXPECT_EQ(fld::memory, nullptr);
}

TEST_F(ScalarIndex, EntriesAreAppended) {
  std::vector<fld::FLDTITLE_Scalar> list(1);
  list[0].m_seek = 77;
  const Section section = indexed_scalar();
  const Input input(body_of(section));
  fld::FLDV4_Scalar_SEEK(input.stream(), 88, section.title.payload().c_str(), list);
  ASSERT_EQ(list.size(), 2U);
  EXPECT_EQ(list[0].m_seek, 77);
  EXPECT_EQ(list[1].m_seek, 88);
}

// Whether indexing the section returns that skipping it ends at the same offset, which `rest` checks.
bool agrees_with_stepping_over(const Section& section, bool ends_there) {
  const Input input(body_of(section) + kNext);
  std::vector<fld::FLDTITLE_Scalar> list;
  const bool agrees = fld::FLDV4_Scalar_SEEK(input.stream(), 0, section.title.payload().c_str(), list);
  const Input stepped_over(body_of(section) + kNext);
  fld::FLDV4_I_SKIP(stepped_over.stream());
  EXPECT_EQ(ftello(input.stream()) == ftello(stepped_over.stream()), ends_there);
  return agrees;
}

TEST_F(ScalarIndex, TellsThatSteppingOverEndsAtTheSamePlace) {
  EXPECT_TRUE(agrees_with_stepping_over(indexed_scalar(), true));
}

TEST_F(ScalarIndex, TellsThatSteppingOverEndsAtAnEndRuleBeforeTheEnd) {
  Section section = indexed_scalar();
  section.blocks[2] = Block::rule_alone({});
  EXPECT_FALSE(agrees_with_stepping_over(section, false));
}

TEST_F(ScalarIndex, IsInDoubtWhereTheLabelHasSeveralRecords) {
  Section section = indexed_scalar();
  section.blocks[0] = section.blocks[0].with_rule({.width = 1, .per_record = 32, .n_records = 2});
  const Input input(body_of(section) + kNext);
  std::vector<fld::FLDTITLE_Scalar> list;
  EXPECT_FALSE(fld::FLDV4_Scalar_SEEK(input.stream(), 0, section.title.payload().c_str(), list));
}

TEST_F(ScalarIndex, AnotherBlockAfterTheValuesFails) {
  Section section = indexed_scalar();
  section.blocks.push_back(Block::integer(1));
  EXPECT_EQ(scalar_index_error(section), "ERROR IN FLDV4_I_END");
}

TEST_F(ScalarIndex, AMissingBlockFails) {
  Section section = indexed_scalar();
  section.blocks.pop_back();
  EXPECT_EQ(scalar_index_error(section), "ERROR IN FLDV4_I_END");
}

TEST_F(ScalarIndex, ALabelOfNegativeLengthIsAnError) {
  Section section = indexed_scalar();
  section.blocks[0].rule = testkit::Rule{1, -32, 1};
  EXPECT_EQ(scalar_index_error(section).substr(0, 18), "NEGATIVE COUNT -32");
}

TEST_F(ScalarIndex, ARecordThatGoesBackIsAnError) {
  Section section = indexed_scalar();
  section.blocks[2].markers.leading = -20;
  EXPECT_EQ(scalar_index_error(section).substr(0, 26), "NEGATIVE RECORD LENGTH -20");
}

TEST_F(ScalarIndex, SectionsOfAFileAreIndexedOneAfterTheOther) {
  testkit::File file;
  testkit::RegionSet& set = file.add_region_set();
  set.add(indexed_scalar("first"));
  set.add(indexed_scalar("second"));
  testkit::Places places;
  const Input input(testkit::to_bytes(file, &places));
  fseek(input.stream(), static_cast<long>(places.of("LS_Scalar:first").offset), SEEK_SET);

  std::vector<fld::FLDTITLE_Scalar> list;
  for (int section = 0; section < 2; ++section) {
    const long offset = input.position();
    char title[fld::kTitleLength + 1];
    fld::FLDV4_I_TITLE(input.stream(), title);
    fld::read_int(input.stream());
    fld::FLDV4_Scalar_SEEK(input.stream(), offset, title, list);
  }
  EXPECT_STREQ(list[0].m_name, "first");
  EXPECT_STREQ(list[1].m_name, "second");
  EXPECT_EQ(list[1].m_seek, static_cast<int64_t>(places.of("LS_Scalar:second").offset));
  EXPECT_EQ(input.rest(), bytes_of(testkit::Title("OverlapEnd")));
}

TEST_F(ScalarIndex, FiveGigabytesOfValuesAreSteppedOver) {
  // Five records of a gigabyte, holes on the disk.
  constexpr int64_t kElements = 5 * (int64_t{1} << 28);
  const testkit::TemporaryDirectory folder;
  Section section = indexed_scalar();
  section.blocks[2] = Block::reals(testkit::Reals::hole(kElements)).cut(1 << 28);
  {
    testkit::FileSink sink(folder / "large");
    testkit::RecordWriter writer(sink);
    for (const Block& block : section.blocks) writer.block(block);
    writer.end_rule();
    sink.close();
  }
  FILE* stream = fopen((folder / "large").c_str(), "rb");
  ASSERT_NE(stream, nullptr);
  std::vector<fld::FLDTITLE_Scalar> list;
  fld::FLDV4_Scalar_SEEK(stream, 0, section.title.payload().c_str(), list);
  EXPECT_EQ(ftello(stream), static_cast<off_t>(std::filesystem::file_size(folder / "large")));
  EXPECT_GT(ftello(stream), 5000000000);
  fclose(stream);
}

TEST_F(VectorIndex, GivesNameLabelAndOffset) {
  const fld::FLDTITLE_Vector entry = index(indexed_vector(), 3, 123);
  EXPECT_STREQ(entry.m_name, "velocity");
  EXPECT_STREQ(entry.m_label, "U");
  EXPECT_EQ(entry.m_seek, 123);
}

TEST_F(VectorIndex, InThreeDimensionsHasThreeComponents) {
  index(indexed_vector(), 3);
}

TEST_F(VectorIndex, InTwoDimensionsHasTwoComponents) {
  index(without_z(indexed_vector()), 2);
}

TEST_F(VectorIndex, AComponentTooManyFails) {
  EXPECT_EQ(vector_index_error(indexed_vector(), 2), "ERROR IN FLDV4_I_END");
}

TEST_F(VectorIndex, AComponentTooFewFails) {
  EXPECT_EQ(vector_index_error(without_z(indexed_vector()), 3), "ERROR IN FLDV4_I_END");
}

TEST_F(VectorIndex, AnyOtherDimensionIsTakenForTwo) {
  index(without_z(indexed_vector()), 0);
  index(without_z(indexed_vector()), -3);
  index(without_z(indexed_vector()), 4);
}

TEST_F(VectorIndex, ComponentsMayBeSpreadOverRecords) {
  Section section = indexed_vector();
  for (const size_t block : {3U, 4U, 5U}) section.blocks[block] = section.blocks[block].cut(1);
  index(section, 3);
}

TEST_F(VectorIndex, ALongerLabelIsReadToItsEndAndCut) {
  Section section = indexed_vector();
  section.blocks[1] = Block::characters(std::string(100, 'x'));
  EXPECT_EQ(index(section, 3).m_label, std::string(32, 'x'));
}

TEST_F(VectorIndex, EntriesAreAppended) {
  std::vector<fld::FLDTITLE_Vector> list(2);
  const Section section = indexed_vector();
  const Input input(body_of(section));
  fld::FLDV4_Vector_SEEK(input.stream(), 88, section.title.payload().c_str(), list, 3);
  ASSERT_EQ(list.size(), 3U);
  EXPECT_EQ(list[2].m_seek, 88);
}

}  // namespace
