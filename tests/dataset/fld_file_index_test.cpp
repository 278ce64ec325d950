// FLDFile::seekFLD and the lookups: the offsets of a file's quantities.
#include <filesystem>

#include "testkit/byte_sink.h"
#include "tests/dataset/dataset_test.h"

namespace fld {
namespace {

using testkit::Block;
using testkit::Section;

constexpr char kSeekFile[] = "int FLDFile::seekFLD()";

Section scalar(const char* name, const char* label = "") {
  return testkit::scalar_section({.name = name, .label = label, .values = {1.0, 2.0, 3.0, 4.0}});
}
Section vector(const char* name, const char* label = "") {
  const testkit::Reals values = {1.0, 2.0, 3.0, 4.0};
  return testkit::vector_section({.name = name, .label = label, .x = values, .y = values, .z = values});
}

class SeekFile : public testing::Test {
 protected:
  // Validates and indexes the file.
  FLDFile indexed(const testkit::File& file) {
    path_ = test::write(directory_, "a.fld", file, &places_);
    FLDFile read = test::checked(path_);
    test::Messages messages;
    EXPECT_EQ(read.seekFLD(), 0);
    EXPECT_EQ(messages.text(), test::trace(path_));
    EXPECT_FALSE(test::is_open(path_));
    return read;
  }
  std::int64_t offset_of(const char* title, int occurrence = 0) const {
    return static_cast<std::int64_t>(places_.of(title, occurrence).offset);
  }

  testkit::TemporaryDirectory directory_;
  testkit::Places places_;
  std::string path_;
};

TEST_F(SeekFile, IndexesScalarsAndVectorsByTheOffsetsOfTheirTitles) {
  testkit::File file;
  file.header.items.clear();
  testkit::RegionSet& set = file.add_region_set();
  set.add(testkit::nodes_section(testkit::one_tetrahedron().nodes));
  set.add(scalar("P", "Pressure [Pa]"));
  set.add(vector("V", "Velocity [m/s]"));
  const FLDFile read = indexed(file);
  ASSERT_EQ(read.m_overlap.size(), 1U);
  const FLDSEEKOverlap& region = read.m_overlap[0];
  ASSERT_EQ(region.m_scalars.size(), 1U);
  EXPECT_STREQ(region.m_scalars[0].m_name, "P");
  EXPECT_STREQ(region.m_scalars[0].m_label, "Pressure [Pa]");
  // Identification 16, version 12, two titles of 40; nodes: title 40, leading integer 32, count 32, three
  // blocks of 44, end rule 20.
  EXPECT_EQ(region.m_scalars[0].m_seek, 364);
  ASSERT_EQ(region.m_vectors.size(), 1U);
  EXPECT_STREQ(region.m_vectors[0].m_name, "V");
  EXPECT_STREQ(region.m_vectors[0].m_label, "Velocity [m/s]");
  // Scalar: title 40, leading integer 32, label 60, count 32, values 44, end rule 20.
  EXPECT_EQ(region.m_vectors[0].m_seek, 592);
  EXPECT_EQ(offset_of("LS_Scalar:P"), 364);
  EXPECT_EQ(offset_of("LS_Vector:V"), 592);
}

TEST_F(SeekFile, KeepsTheOrderOfTheSectionsAndAllOccurrences) {
  testkit::File file = test::plain_file();
  testkit::RegionSet& set = file.region_sets[0];
  set.add(scalar("B", "first"));
  set.add(vector("V"));
  set.add(scalar("A"));
  set.add(scalar("B", "second"));
  const FLDFile read = indexed(file);
  const auto& scalars = read.m_overlap[0].m_scalars;
  ASSERT_EQ(scalars.size(), 3U);
  EXPECT_STREQ(scalars[0].m_name, "B");
  EXPECT_STREQ(scalars[1].m_name, "A");
  EXPECT_STREQ(scalars[2].m_name, "B");
  EXPECT_EQ(scalars[0].m_seek, offset_of("LS_Scalar:B", 0));
  EXPECT_EQ(scalars[1].m_seek, offset_of("LS_Scalar:A"));
  EXPECT_EQ(scalars[2].m_seek, offset_of("LS_Scalar:B", 1));
  EXPECT_EQ(read.findSeekScalar("B", 0), &scalars[0]);
}

TEST_F(SeekFile, KeepsRegionSetsApart) {
  testkit::File file = test::plain_file();
  file.region_sets[0].add(scalar("P"));
  file.add_region_set();
  testkit::RegionSet& third = file.add_region_set();
  third.add(vector("V"));
  third.add(scalar("P"));
  const FLDFile read = indexed(file);
  ASSERT_EQ(read.m_overlap.size(), 3U);
  ASSERT_EQ(read.m_overlap[0].m_scalars.size(), 1U);
  EXPECT_EQ(read.m_overlap[0].m_scalars[0].m_seek, offset_of("LS_Scalar:P", 0));
  EXPECT_TRUE(read.m_overlap[0].m_vectors.empty());
  EXPECT_TRUE(read.m_overlap[1].m_scalars.empty());
  EXPECT_TRUE(read.m_overlap[1].m_vectors.empty());
  ASSERT_EQ(read.m_overlap[2].m_scalars.size(), 1U);
  EXPECT_EQ(read.m_overlap[2].m_scalars[0].m_seek, offset_of("LS_Scalar:P", 1));
  ASSERT_EQ(read.m_overlap[2].m_vectors.size(), 1U);
  EXPECT_EQ(read.m_overlap[2].m_vectors[0].m_seek, offset_of("LS_Vector:V"));
}

TEST_F(SeekFile, NamesAndLabelsKeepWhatFitsWithoutTrailingBlanks) {
  testkit::File file = test::plain_file();
  file.region_sets[0].add(scalar("pressure", "Pa"));
  file.region_sets[0].add(scalar("twenty-two characters.", "thirty-two characters of a label"));
  file.region_sets[0].add(scalar(" P x", " a b"));
  Section long_label = scalar("long");
  long_label.blocks[0] = Block::characters("the label of this section is longer than 32 characters");
  file.region_sets[0].add(long_label);
  file.region_sets[0].add(scalar(""));
  const FLDFile read = indexed(file);
  const auto& scalars = read.m_overlap[0].m_scalars;
  ASSERT_EQ(scalars.size(), 5U);
  EXPECT_STREQ(scalars[0].m_name, "pressure");
  EXPECT_STREQ(scalars[0].m_label, "Pa");
  EXPECT_STREQ(scalars[1].m_name, "twenty-two characters.");
  EXPECT_STREQ(scalars[1].m_label, "thirty-two characters of a label");
  EXPECT_STREQ(scalars[2].m_name, " P x");
  EXPECT_STREQ(scalars[2].m_label, " a b");
  EXPECT_STREQ(scalars[3].m_label, "the label of this section is lon");
  EXPECT_STREQ(scalars[4].m_name, "");
  EXPECT_STREQ(scalars[4].m_label, "");
}

TEST_F(SeekFile, ValuesInAnyNumberOfRecordsAndAnyPrecisionAreSteppedOver) {
  testkit::File file = test::plain_file();
  file.split = 1;
  testkit::Scalar in_double{.name = "P", .label = "", .values = {1.0, 2.0, 3.0, 4.0, 5.0}};
  in_double.precision = testkit::Precision::kDouble;
  testkit::Vector mixed{.name = "V", .label = "", .x = {1.0, 2.0}, .y = {1.0, 2.0}, .z = {1.0, 2.0}};
  mixed.precision[1] = testkit::Precision::kDouble;
  file.region_sets[0].add(testkit::scalar_section(in_double));
  file.region_sets[0].add(testkit::vector_section(mixed));
  file.region_sets[0].add(scalar("last"));
  const FLDFile read = indexed(file);
  ASSERT_EQ(read.m_overlap[0].m_vectors.size(), 1U);
  EXPECT_EQ(read.m_overlap[0].m_vectors[0].m_seek, offset_of("LS_Vector:V"));
  ASSERT_EQ(read.m_overlap[0].m_scalars.size(), 2U);
  EXPECT_EQ(read.m_overlap[0].m_scalars[1].m_seek, offset_of("LS_Scalar:last"));
}

TEST_F(SeekFile, MotionAndUnknownSectionsAreSteppedOver) {
  testkit::File file = test::plain_file();
  file.region_sets[0].add(testkit::motion_section(
      {.base_cycle = 1, .regions = {{.names = {"fluid"}, .actions = {testkit::Action::translate({})}}}}));
  file.region_sets[0].add(Section{.title = "LS_Scalar", .blocks = {Block::integer(1)}});
  file.region_sets[0].add(scalar("P"));
  const FLDFile read = indexed(file);
  ASSERT_EQ(read.m_overlap[0].m_scalars.size(), 1U);
  EXPECT_EQ(read.m_overlap[0].m_scalars[0].m_seek, offset_of("LS_Scalar:P"));
}

TEST_F(SeekFile, VectorWithoutThirdComponentIsReadWhenTheDimensionIsNot3) {
  testkit::File file = test::plain_file();
  file.header.set_dimension(1);
  Section flat = vector("V", "label");
  flat.blocks.pop_back();
  file.region_sets[0].add(flat);
  file.region_sets[0].add(scalar("P"));
  const FLDFile read = indexed(file);
  ASSERT_EQ(read.m_overlap[0].m_vectors.size(), 1U);
  EXPECT_STREQ(read.m_overlap[0].m_vectors[0].m_label, "label");
  EXPECT_EQ(read.m_overlap[0].m_scalars.size(), 1U);
}

TEST_F(SeekFile, VectorHasThreeComponentsWhenTheDimensionIsMissing) {
  testkit::File file = test::plain_file();
  file.header.remove("Dimension");
  file.region_sets[0].add(vector("V"));
  EXPECT_EQ(indexed(file).m_overlap[0].m_vectors.size(), 1U);
}

TEST_F(SeekFile, VectorOfTheWrongNumberOfComponentsIsAReadError) {
  testkit::File file = test::plain_file();
  file.header.set_dimension(1);
  file.region_sets[0].add(vector("V"));
  FLDFile read = test::checked(test::write(directory_, "a.fld", file));
  test::Messages messages;
  EXPECT_EQ(test::read_error([&] { return read.seekFLD(); }), "ERROR IN FLDV4_I_END");
  EXPECT_FALSE(test::is_open(read.m_path));
}

TEST_F(SeekFile, EndIsOnlyTheExactTitle) {
  testkit::File file = test::plain_file();
  // Validation ends here; the index continues to the real end.
  file.region_sets[0].add(Section{.title = "OverlapEndNote", .blocks = {Block::characters("a note")}});
  file.region_sets[0].add(scalar("P"));
  const FLDFile read = indexed(file);
  ASSERT_EQ(read.m_overlap.size(), 1U);
  ASSERT_EQ(read.m_overlap[0].m_scalars.size(), 1U);
  EXPECT_EQ(read.m_overlap[0].m_scalars[0].m_seek, offset_of("LS_Scalar:P"));
}

TEST_F(SeekFile, MissingFileCannotBeOpened) {
  const std::string path = (directory_ / "missing.fld").string();
  test::Messages messages;
  EXPECT_EQ(FLDFile(path).seekFLD(), -1);
  EXPECT_EQ(messages.text(), "IN ( FLD): " + path + "\nFAILED TO OPEN " + path + "\n");
}

TEST_F(SeekFile, FileThatIsNotAnFldFileAnyMoreIsRefused) {
  const std::string path = test::write(directory_, "a.fld", test::plain_file());
  FLDFile read = test::checked(path);
  testkit::write_bytes(path, "something else altogether");
  test::Messages messages;
  EXPECT_EQ(read.seekFLD(), -2);
  EXPECT_EQ(messages.text(), "IN ( FLD): " + path + "\nThis is not FLD file.\n");
  EXPECT_FALSE(test::is_open(path));
}

TEST_F(SeekFile, WrongVersionIsRefused) {
  testkit::File file = test::plain_file();
  file.version = 3;
  const std::string path = test::write(directory_, "a.fld", file);
  test::Messages messages;
  EXPECT_EQ(FLDFile(path).seekFLD(), -3);
  EXPECT_EQ(messages.text(), "IN ( FLD): " + path + "\nFLD FILE VERSION HAS TO BE 4.\n");
  EXPECT_FALSE(test::is_open(path));
}

TEST_F(SeekFile, TwoDimensionsAreRefused) {
  testkit::File file = test::plain_file();
  file.header.set_dimension(2);
  const std::string path = test::write(directory_, "a.fld", file);
  test::Messages messages;
  EXPECT_EQ(FLDFile(path).seekFLD(), -3);
  EXPECT_EQ(messages.text(), "IN ( FLD): " + path + "\nL2D3D MUST BE 3 IN FLD\n");
  EXPECT_FALSE(test::is_open(path));
}

TEST_F(SeekFile, FileThatBreaksOffAnywhereIsAReadError) {
  testkit::File file = test::plain_file();
  file.region_sets[0].add(scalar("P"));
  file.region_sets[0].add(vector("V"));
  const std::string path = test::write(directory_, "a.fld", file);
  const FLDFile whole_file = test::checked(path);
  for (auto length = std::filesystem::file_size(path) - 1; length >= 16; --length) {
    std::filesystem::resize_file(path, length);
    FLDFile read = whole_file;
    test::Messages messages;
    const std::string error = test::read_error([&] { return read.seekFLD(); });
    ASSERT_EQ(error.substr(0, 31), "UNEXPECTED END OF FILE AT BYTE ") << length;
    ASSERT_EQ(messages.text(), test::trace(path)) << length;
    ASSERT_FALSE(test::is_open(path)) << length;
  }
}

TEST(SeekFileDeathTest, FileWithoutRegionSetsIsAnAssertion) {
  const testkit::TemporaryDirectory directory;
  FLDFile read = test::checked(test::write(directory, "a.fld", testkit::File()));
  EXPECT_ASSERTION(read.seekFLD(), "fld", kSeekFile, "!m_overlap.empty()");
}

TEST(SeekFileDeathTest, SectionBeforeTheFirstRegionSetIsAnAssertion) {
  const testkit::TemporaryDirectory directory;
  testkit::File file;
  testkit::RegionSet& without_opener = file.add_region_set();
  without_opener.opener.reset();
  without_opener.add(scalar("P"));
  file.add_region_set();
  FLDFile read = test::checked(test::write(directory, "a.fld", file));
  EXPECT_ASSERTION(read.seekFLD(), "fld", kSeekFile, "overlap != m_overlap.end()");
}

TEST(SeekFileDeathTest, SectionBehindTheLastKnownRegionSetIsAnAssertion) {
  const testkit::TemporaryDirectory directory;
  testkit::File file = test::plain_file();
  file.region_sets[0].add(Section{.title = "OverlapEndNote", .blocks = {}});
  file.add_region_set().add(scalar("P"));
  FLDFile read = test::checked(test::write(directory, "a.fld", file));
  ASSERT_EQ(read.m_overlap.size(), 1U);
  EXPECT_ASSERTION(read.seekFLD(), "fld", kSeekFile, "overlap != m_overlap.end()");
}

TEST(FindSeek, FindsTheNameInItsRegionSetAndItsKind) {
  FLDFile file("file");
  file.m_overlap.resize(2);
  const auto add = [](auto& titles, const char* name) {
    std::string(name).copy(titles.own().emplace_back().m_name, 32);
  };
  add(file.m_overlap[0].m_scalars, "P");
  add(file.m_overlap[0].m_scalars, "T");
  add(file.m_overlap[0].m_vectors, "V");
  add(file.m_overlap[1].m_scalars, "T");
  EXPECT_EQ(file.findSeekScalar("T", 0), &file.m_overlap[0].m_scalars[1]);
  EXPECT_EQ(file.findSeekScalar("T", 1), &file.m_overlap[1].m_scalars[0]);
  EXPECT_EQ(file.findSeekVector("V", 0), &file.m_overlap[0].m_vectors[0]);
  EXPECT_EQ(file.findSeekScalar("V", 0), nullptr);
  EXPECT_EQ(file.findSeekVector("P", 0), nullptr);
  EXPECT_EQ(file.findSeekScalar("P", 1), nullptr);
  EXPECT_EQ(file.findSeekVector("V", 1), nullptr);
}

TEST(FindSeek, ComparesTheWholeNameWithItsCase) {
  FLDFile file("file");
  file.m_overlap.resize(1);
  std::string("Pres").copy(file.m_overlap[0].m_scalars.own().emplace_back().m_name, 32);
  for (const char* name : {"pres", "Pre", "Press", "", " Pres", "Pres "}) {
    EXPECT_EQ(file.findSeekScalar(name, 0), nullptr) << name;
  }
  EXPECT_NE(file.findSeekScalar("Pres", 0), nullptr);
}

TEST(FindSeek, RegionSetThatDoesNotExistHasNothing) {
  FLDFile file("file");
  EXPECT_EQ(file.findSeekScalar("P", 0), nullptr);
  EXPECT_EQ(file.findSeekVector("P", 0), nullptr);
  file.m_overlap.resize(1);
  std::string("P").copy(file.m_overlap[0].m_scalars.own().emplace_back().m_name, 32);
  std::string("P").copy(file.m_overlap[0].m_vectors.own().emplace_back().m_name, 32);
  for (const int region : {1, -1, 2147483647, -2147483647 - 1}) {
    EXPECT_EQ(file.findSeekScalar("P", region), nullptr) << region;
    EXPECT_EQ(file.findSeekVector("P", region), nullptr) << region;
  }
}

}  // namespace
}  // namespace fld
