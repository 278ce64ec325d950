// FLD::seekFLD: the index of a whole series, file by file or from its first file alone.
#include <filesystem>

#include "dataset/fld.h"
#include "testkit/byte_sink.h"
#include "tests/dataset/dataset_test.h"

namespace fld {
namespace {

constexpr char kSeekSeries[] = "int FLD::seekFLD(bool)";

testkit::Section four_values(const char* name, const char* label = "") {
  return testkit::scalar_section({.name = name, .label = label, .values = {1.0, 2.0, 3.0, 4.0}});
}

// A series of three files; the quantities of the later ones have larger offsets.
class SeekSeries : public testing::Test {
 protected:
  SeekSeries() {
    std::string comments(80, 'c');
    for (int i = 0; i < 3; ++i) {
      testkit::File& file = files_[i] = test::plain_file(10 * (i + 1), 0.5 * i);
      file.header.set(testkit::header_item("Comments", {testkit::Block::characters(comments)}));
      comments += "and more";
      file.region_sets[0].add(four_values("P"));
      file.region_sets[0].add(
          testkit::vector_section({.name = "V", .label = "", .x = {1.0}, .y = {1.0}, .z = {1.0}}));
    }
  }

  void search() {
    for (int i = 0; i < 3; ++i) {
      paths_[i] = test::write(directory_, "case_" + std::to_string(i + 1) + ".fld", files_[i], &places_[i]);
    }
    ASSERT_EQ(fld_.searchFLD(paths_[1].c_str()), 0);
    ASSERT_EQ(fld_.m_fld.size(), 3U);
  }
  // The result and the messages.
  test::Reading seek(bool full) {
    test::Messages messages;
    const int status = fld_.seekFLD(full);
    return {status, messages.text()};
  }
  std::int64_t scalar_offset(int file) const {
    return static_cast<std::int64_t>(places_[file].of("LS_Scalar:P").offset);
  }

  testkit::TemporaryDirectory directory_;
  testkit::File files_[3];
  testkit::Places places_[3];
  std::string paths_[3];
  FLD fld_;
};

TEST_F(SeekSeries, FullIndexReadsEveryFile) {
  ASSERT_NO_FATAL_FAILURE(search());
  const auto [status, messages] = seek(true);
  EXPECT_EQ(status, 0);
  EXPECT_EQ(messages, test::trace(paths_[0]) + test::trace(paths_[1]) + test::trace(paths_[2]));
  for (int i = 0; i < 3; ++i) {
    const FLDSEEKOverlap& region = fld_.m_fld[static_cast<size_t>(i)].m_overlap.at(0);
    ASSERT_EQ(region.m_scalars.size(), 1U);
    EXPECT_EQ(region.m_scalars[0].m_seek, scalar_offset(i));
    ASSERT_EQ(region.m_vectors.size(), 1U);
    EXPECT_EQ(region.m_vectors[0].m_seek, static_cast<std::int64_t>(places_[i].of("LS_Vector:V").offset));
    EXPECT_FALSE(test::is_open(paths_[i]));
  }
  EXPECT_EQ(scalar_offset(1), scalar_offset(0) + 8);
}

TEST_F(SeekSeries, SimplifiedIndexReadsTheFirstFileOnly) {
  ASSERT_NO_FATAL_FAILURE(search());
  const auto [status, messages] = seek(false);
  EXPECT_EQ(status, 0);
  EXPECT_EQ(messages, test::trace(paths_[0]));
  for (const FLDFile& file : fld_.m_fld) {
    ASSERT_EQ(file.m_overlap.at(0).m_scalars.size(), 1U);
    EXPECT_STREQ(file.m_overlap[0].m_scalars[0].m_name, "P");
    EXPECT_EQ(file.m_overlap[0].m_scalars[0].m_seek, scalar_offset(0));
    ASSERT_EQ(file.m_overlap[0].m_vectors.size(), 1U);
    EXPECT_EQ(file.m_overlap[0].m_vectors[0].m_seek,
              static_cast<std::int64_t>(places_[0].of("LS_Vector:V").offset));
  }
}

TEST_F(SeekSeries, SimplifiedIndexDoesNotOpenTheLaterFiles) {
  ASSERT_NO_FATAL_FAILURE(search());
  std::filesystem::remove(paths_[1]);
  testkit::write_bytes(paths_[2], "something else");
  EXPECT_EQ(seek(false).status, 0);
}

TEST_F(SeekSeries, SimplifiedIndexKeepsEverythingElseOfTheLaterFiles) {
  files_[1].region_sets[0].remove("LS_Nodes");
  files_[1].region_sets[0].add(testkit::motion_section({.base_cycle = 10, .regions = {}}));
  files_[2].region_sets[0].add(four_values("@BNODE"));
  ASSERT_NO_FATAL_FAILURE(search());
  EXPECT_EQ(seek(false).status, 0);
  const FLDFile& second = fld_.m_fld[1];
  EXPECT_EQ(second.m_path, paths_[1]);
  EXPECT_EQ(second.m_cycle, 20);
  EXPECT_EQ(second.m_time, 0.5);
  EXPECT_FALSE(second.m_overlap[0].m_hasGeometry);
  EXPECT_TRUE(second.m_overlap[0].m_hasALE);
  EXPECT_EQ(second.m_overlap[0].m_ale.base_cycle, 10);
  EXPECT_TRUE(fld_.m_fld[2].m_overlap[0].m_hasOverset);
  EXPECT_EQ(fld_.m_fld[2].findSeekScalar("@BNODE", 0), nullptr);
}

TEST_F(SeekSeries, SimplifiedIndexCopiesRegionSetByRegionSet) {
  for (testkit::File& file : files_) {
    testkit::RegionSet& set = file.add_region_set();
    set.add(testkit::mesh_sections(testkit::one_tetrahedron()));
    set.add(four_values("Q"));
  }
  ASSERT_NO_FATAL_FAILURE(search());
  EXPECT_EQ(seek(false).status, 0);
  for (const FLDFile& file : fld_.m_fld) {
    ASSERT_EQ(file.m_overlap.size(), 2U);
    ASSERT_NE(file.findSeekScalar("P", 0), nullptr);
    EXPECT_EQ(file.findSeekScalar("P", 1), nullptr);
    EXPECT_EQ(file.findSeekScalar("Q", 0), nullptr);
    ASSERT_NE(file.findSeekScalar("Q", 1), nullptr);
    EXPECT_EQ(file.findSeekScalar("Q", 1)->m_seek,
              static_cast<std::int64_t>(places_[0].of("LS_Scalar:Q").offset));
  }
}

TEST_F(SeekSeries, MotionInAnyFileIsSeen) {
  ASSERT_NO_FATAL_FAILURE(search());
  fld_.m_anyALE = true;
  EXPECT_EQ(seek(true).status, 0);
  EXPECT_FALSE(fld_.m_anyALE);
  files_[2].region_sets[0].add(testkit::motion_section({.base_cycle = 10, .regions = {}}));
  for (const bool full : {true, false}) {
    fld_ = FLD();
    ASSERT_NO_FATAL_FAILURE(search());
    EXPECT_EQ(seek(full).status, 0);
    EXPECT_TRUE(fld_.m_anyALE) << full;
  }
}

TEST_F(SeekSeries, CatalogueHasTheQuantitiesOfAllFiles) {
  files_[0].region_sets[0].add(four_values("A", "of file 1"));
  files_[1].region_sets[0].add(four_values("B"));
  files_[2].region_sets[0].add(four_values("C"));
  files_[2].region_sets[0].add(four_values("A", "of file 3"));
  ASSERT_NO_FATAL_FAILURE(search());
  EXPECT_EQ(seek(true).status, 0);
  EXPECT_EQ(fld_.m_field.scalar_names(), (std::vector<std::string>{"P", "A", "B", "C"}));
  EXPECT_EQ(fld_.m_field.scalar_labels(), (std::vector<std::string>{"", "of file 1", "", ""}));
  EXPECT_EQ(fld_.m_field.vector_names(), std::vector<std::string>{"V"});
}

// A copy of the entries per file would take memory proportional to files times quantities.
TEST_F(SeekSeries, SimplifiedIndexIsHeldOnce) {
  ASSERT_NO_FATAL_FAILURE(search());
  EXPECT_EQ(seek(false).status, 0);
  for (const FLDFile& file : fld_.m_fld) {
    EXPECT_EQ(file.m_overlap[0].m_scalars.begin(), fld_.m_fld[0].m_overlap[0].m_scalars.begin());
    EXPECT_EQ(file.m_overlap[0].m_vectors.begin(), fld_.m_fld[0].m_overlap[0].m_vectors.begin());
  }
}

TEST_F(SeekSeries, CatalogueOfTheSimplifiedIndexIsThatOfTheFirstFile) {
  files_[1].region_sets[0].add(four_values("B"));
  ASSERT_NO_FATAL_FAILURE(search());
  EXPECT_EQ(seek(false).status, 0);
  EXPECT_EQ(fld_.m_field.scalar_names(), std::vector<std::string>{"P"});
}

TEST_F(SeekSeries, StopsAtAFileThatCannotBeOpened) {
  ASSERT_NO_FATAL_FAILURE(search());
  std::filesystem::remove(paths_[1]);
  const auto [status, messages] = seek(true);
  EXPECT_EQ(status, -1);
  EXPECT_EQ(messages, test::trace(paths_[0]) + test::trace(paths_[1]) + "FAILED TO OPEN " + paths_[1] + "\n");
  EXPECT_TRUE(fld_.m_field.scalar_names().empty());
}

TEST_F(SeekSeries, EveryFailureIsMinus1) {
  ASSERT_NO_FATAL_FAILURE(search());
  testkit::write_bytes(paths_[0], "something else");
  for (const bool full : {true, false}) {
    const auto [status, messages] = seek(full);
    EXPECT_EQ(status, -1);
    EXPECT_EQ(messages, test::trace(paths_[0]) + "This is not FLD file.\n");
  }
  files_[0].version = 3;
  test::write(directory_, "case_1.fld", files_[0]);
  EXPECT_EQ(seek(true).status, -1);
  files_[0].version = 4;
  files_[0].header.set_dimension(2);
  test::write(directory_, "case_1.fld", files_[0]);
  EXPECT_EQ(seek(false).status, -1);
}

TEST_F(SeekSeries, SingleFileIsIndexedEitherWay) {
  for (const bool full : {true, false}) {
    const std::string path = test::write(directory_, "mesh.fld", files_[0]);
    FLD fld;
    ASSERT_EQ(fld.searchFLD(path.c_str()), 0);
    test::Messages messages;
    EXPECT_EQ(fld.seekFLD(full), 0);
    EXPECT_EQ(messages.text(), test::trace(path));
    EXPECT_NE(fld.m_fld.at(0).findSeekScalar("P", 0), nullptr);
    EXPECT_EQ(fld.m_fld[0].findSeekScalar("P", 1), nullptr);
  }
}

using SeekSeriesDeathTest = SeekSeries;

TEST_F(SeekSeriesDeathTest, EmptyListOfFilesIsAnAssertion) {
  EXPECT_ASSERTION(fld_.seekFLD(true), "fld", kSeekSeries, "!m_fld.empty()");
  EXPECT_ASSERTION(fld_.seekFLD(false), "fld", kSeekSeries, "!m_fld.empty()");
}

TEST_F(SeekSeriesDeathTest, SimplifiedIndexNeedsEquallyManyRegionSets) {
  files_[2].add_region_set();
  ASSERT_NO_FATAL_FAILURE(search());
  EXPECT_ASSERTION(fld_.seekFLD(false), "fld", kSeekSeries,
                   "it_s->m_overlap.size() == it_d->m_overlap.size()");
  EXPECT_EQ(seek(true).status, 0);
}

}  // namespace
}  // namespace fld
