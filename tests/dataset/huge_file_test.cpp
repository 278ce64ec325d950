// Files beyond 4 GiB: offsets are correct, and little of the file is read.
#include <cstdint>
#include <fstream>

#include "dataset/fld.h"
#include "tests/dataset/dataset_test.h"

namespace fld {
namespace {

constexpr std::int64_t kHugeCount = std::int64_t{6} << 28;  // values of 4 bytes, 6 GiB

// Bytes that this process has read from files so far.
std::int64_t bytes_read() {
  std::ifstream io("/proc/self/io");
  std::string word;
  std::int64_t bytes = -1;
  io >> word >> bytes;
  EXPECT_EQ(word, "rchar:");
  return bytes;
}

testkit::Section huge_scalar() {
  return testkit::scalar_section(
      {.name = "huge", .label = "Huge [-]", .values = testkit::Reals::hole(kHugeCount)});
}
testkit::Section small_scalar(const char* name) {
  return testkit::scalar_section({.name = name, .label = "Small [-]", .values = {1.0, 2.0, 3.0, 4.0}});
}

TEST(HugeFile, OffsetsBeyond4GibibytesAreRight) {
  const testkit::TemporaryDirectory directory;
  testkit::File file;
  file.header.items.clear();
  testkit::RegionSet& set = file.add_region_set();
  set.add(huge_scalar());
  set.add(small_scalar("P"));
  set.add(testkit::vector_section({.name = "V", .label = "", .x = {1.0}, .y = {1.0}, .z = {1.0}}));
  testkit::Places places;
  FLDFile read = test::checked(test::write(directory, "a.fld", file, &places));
  test::Messages messages;
  ASSERT_EQ(read.seekFLD(), 0);
  const FLDTITLE_Scalar* scalar = read.findSeekScalar("P", 0);
  ASSERT_NE(scalar, nullptr);
  // The region set's sections begin at 108; title 40, leading integer 32, label 60, count 32, rule record 20,
  // four records with 32 bytes of markers and 6442450944 bytes of values, end rule 20.
  EXPECT_EQ(scalar->m_seek, 6442451288);
  EXPECT_EQ(scalar->m_seek, static_cast<std::int64_t>(places.of("LS_Scalar:P").offset));
  const FLDTITLE_Vector* vector = read.findSeekVector("V", 0);
  ASSERT_NE(vector, nullptr);
  EXPECT_EQ(vector->m_seek, 6442451288 + 228);
  EXPECT_EQ(read.findSeekScalar("huge", 0)->m_seek, 108);
}

TEST(HugeFile, OpeningAndIndexingReadLittleOfIt) {
  const testkit::TemporaryDirectory directory;
  testkit::File file = test::plain_file();
  file.region_sets[0].add(huge_scalar());
  file.region_sets[0].add(small_scalar("P"));
  const std::string path = test::write(directory, "a.fld", file);
  FLD fld;
  const std::int64_t before = bytes_read();
  ASSERT_EQ(fld.searchFLD(path.c_str()), 0);
  test::Messages messages;
  ASSERT_EQ(fld.seekFLD(true), 0);
  EXPECT_LT(bytes_read() - before, 128 << 10);
  EXPECT_NE(fld.m_fld.at(0).findSeekScalar("P", 0), nullptr);
}

TEST(HugeFile, ManySmallRecordsAreSteppedOverWithoutReadingThem) {
  const testkit::TemporaryDirectory directory;
  testkit::File file = test::plain_file();
  testkit::Section scalar = huge_scalar();
  scalar.blocks[2] = scalar.blocks[2].cut(std::int64_t{1} << 24);  // 96 records of 64 MiB
  file.region_sets[0].add(scalar);
  file.region_sets[0].add(small_scalar("P"));
  testkit::Places places;
  const std::string path = test::write(directory, "a.fld", file, &places);
  FLDFile read(path);
  const std::int64_t before = bytes_read();
  ASSERT_EQ(read.checkSections(), 0);
  test::Messages messages;
  ASSERT_EQ(read.seekFLD(), 0);
  EXPECT_LT(bytes_read() - before, 2 << 20);
  EXPECT_EQ(read.findSeekScalar("P", 0)->m_seek, static_cast<std::int64_t>(places.of("LS_Scalar:P").offset));
}

TEST(HugeFile, GeometryOfARegionSetBeyond4GibibytesIsRead) {
  const testkit::TemporaryDirectory directory;
  testkit::File file;
  file.header.set_bias(1);
  testkit::RegionSet& first = file.add_region_set();
  first.add(testkit::mesh_sections(testkit::one_tetrahedron()));
  first.add(huge_scalar());
  testkit::RegionSet& second = file.add_region_set();
  second.add(huge_scalar());
  second.add(testkit::mesh_sections(testkit::one_of_each()));
  const FLDFile checked = test::checked(test::write(directory, "a.fld", file));
  ASSERT_EQ(checked.m_overlap.size(), 2U);
  EXPECT_GT(checked.m_overlap[1].m_begin, kHugeCount * 4);
  const std::int64_t before = bytes_read();
  FLDGEO geo;
  const auto [status, messages] = test::read_geometry(checked, 1, geo);
  EXPECT_LT(bytes_read() - before, 4 << 20);
  EXPECT_EQ(status, 0);
  EXPECT_EQ(messages, test::trace(checked.m_path));
  EXPECT_EQ(geo.node_count(), 11);
  EXPECT_EQ(geo.element_count(), 4);
  EXPECT_EQ(vfpa2double(geo.nodes->z, 10), 2.0);
  EXPECT_EQ(test::list(geo.elements->conn + 8, 6), (std::vector<int>{1, 8, 2, 5, 9, 6}));
}

}  // namespace
}  // namespace fld
