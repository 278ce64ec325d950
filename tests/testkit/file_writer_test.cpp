// Whole files: order, places, deliberate damage, holes.
#include "testkit/file_writer.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <stdexcept>
#include <sys/stat.h>
#include <system_error>

#include "testkit/small_meshes.h"
#include "testkit/temporary_directory.h"
#include "tests/testkit/hex.h"

namespace {

using testkit::Block;
using testkit::File;

TEST(FileWriter, WritesAnEmptyDataset) {
  File file;
  file.header.items.clear();
  file.add_region_set();
  EXPECT_BYTES(testkit::to_bytes(file),
               "00000008 'VTRL-FLD' 00000008 00000004 00000004 00000004"
               "00000020 'HeaderDataEnd                   ' 00000020"
               "00000020 'OverlapStart_1                  ' 00000020"
               "00000020 'OverlapEnd                      ' 00000020");
}

TEST(FileWriter, WritesHeaderItemsInTheirOrder) {
  File file;
  file.header.items.clear();
  file.header.set_bias(1);
  file.header.set(testkit::header_item("Foo", {Block::characters("bar")}));
  file.header_end.reset();
  file.closer.reset();
  EXPECT_BYTES(testkit::to_bytes(file),
               "00000008 'VTRL-FLD' 00000008 00000004 00000004 00000004"
               "00000020 'Bias                            ' 00000020"
               "0000000c 00000004 00000001 00000001 0000000c 00000004 00000001 00000004"
               "0000000c 00000000 00000000 00000000 0000000c"
               "00000020 'Foo                             ' 00000020"
               "0000000c 00000001 00000003 00000001 0000000c 00000003 'bar' 00000003"
               "0000000c 00000000 00000000 00000000 0000000c");
}

TEST(FileWriter, WritesSectionsWithLeadingIntegerAndEndRule) {
  File file;
  file.header.items.clear();
  testkit::RegionSet& set = file.add_region_set();
  set.add(testkit::Section{.title = "LS_Whatever", .blocks = {Block::integer(2)}, .leading = 9});
  const std::string bytes = testkit::to_bytes(file);
  // After identification, version and two titles, and before the last one.
  EXPECT_BYTES(bytes.substr(108, bytes.size() - 148),
               "00000020 'LS_Whatever                     ' 00000020"
               "0000000c 00000004 00000001 00000001 0000000c 00000004 00000009 00000004"
               "0000000c 00000004 00000001 00000001 0000000c 00000004 00000002 00000004"
               "0000000c 00000000 00000000 00000000 0000000c");
}

TEST(FileWriter, AnythingMayBeMissingOrWrong) {
  File file;
  file.magic = "ANY";
  file.version.reset();
  file.header.items.clear();
  file.header_end.reset();
  testkit::RegionSet& set = file.add_region_set();
  set.opener.reset();
  testkit::Section section{.title = "A", .blocks = {Block::raw("raw")}, .leading = {}};
  section.end_rule = testkit::Rule{0, 5, 0};
  set.add(section);
  section.end_rule.reset();
  set.add(section);
  file.closer = "TheEnd";
  file.trailing_bytes = "...";
  EXPECT_BYTES(testkit::to_bytes(file),
               "00000003 'ANY' 00000003"
               "00000020 'A                               ' 00000020 'raw'"
               "0000000c 00000000 00000005 00000000 0000000c"
               "00000020 'A                               ' 00000020 'raw'"
               "00000020 'TheEnd                          ' 00000020 '...'");
}

TEST(FileWriter, NumbersRegionSets) {
  File file;
  testkit::RegionSet& first = file.add_region_set();
  file.add_region_set();
  EXPECT_EQ(first.opener->text, "OverlapStart_1");
  EXPECT_EQ(file.region_sets[1].opener->text, "OverlapStart_2");
}

TEST(FileWriter, AddsTheBiasToIndices) {
  File file = testkit::file_of(testkit::one_tetrahedron());
  testkit::Places places;
  const auto conn = [&] {
    const std::string bytes = testkit::to_bytes(file, &places);
    return bytes.substr(places.of("LS_Elements").blocks[3] + 20, 24);
  };
  EXPECT_BYTES(conn(), "00000010 00000000 00000001 00000002 00000003 00000010");
  file.header.set_bias(1);
  EXPECT_BYTES(conn(), "00000010 00000001 00000002 00000003 00000004 00000010");
  file.index_shift = -1;
  EXPECT_BYTES(conn(), "00000010 ffffffff 00000000 00000001 00000002 00000010");
}

TEST(FileWriter, SaysWhereEverythingStarts) {
  File file = testkit::file_of(testkit::one_tetrahedron());
  file.region_sets[0].add(testkit::scalar_section({.name = "p", .label = "l", .values = {1, 2, 3, 4}}));
  testkit::Places places;
  const std::string bytes = testkit::to_bytes(file, &places);
  EXPECT_EQ(places.size, bytes.size());
  std::uint64_t next = 28;
  for (const testkit::Place& place : places.all) {
    EXPECT_EQ(place.offset, next);
    next = place.end;
    EXPECT_EQ(bytes.substr(place.offset + 4, place.title.size()), place.title);
  }
  EXPECT_EQ(next, bytes.size());
  const testkit::Place& scalar = places.of("LS_Scalar:p");
  EXPECT_EQ(scalar.region_set, 0);
  ASSERT_EQ(scalar.blocks.size(), 3U);
  // Title record, leading integer, label, value count.
  EXPECT_EQ(scalar.blocks[2] - scalar.offset, 40U + 32U + 60U + 32U);
  EXPECT_BYTES(bytes.substr(scalar.blocks[2], 20), "0000000c 00000004 00000004 00000001 0000000c");
  EXPECT_THROW(places.of("LS_Scalar:q"), std::out_of_range);
  EXPECT_THROW(places.of("LS_Scalar:p", 1), std::out_of_range);
}

TEST(FileWriter, CutsAllNumericBlocksOfAFile) {
  File file = testkit::file_of(testkit::one_tetrahedron());
  file.split = 3;
  testkit::Places places;
  const std::string bytes = testkit::to_bytes(file, &places);
  const testkit::Place& nodes = places.of("LS_Nodes");
  EXPECT_BYTES(bytes.substr(nodes.blocks[2], 20 + 20 + 12),
               "0000000c 00000004 00000003 00000002 0000000c"
               "0000000c 00000000 00000000 3f800000 0000000c 00000004 00000000 00000004");
  // Names and labels stay whole.
  EXPECT_BYTES(bytes.substr(places.of("LS_VolumeGeometry").blocks[2], 33),
               "0000000c 00000001 00000005 00000001 0000000c 00000005 'fluid' 00000005");
}

TEST(FileWriter, WritesTheSameToDiskAndMemory) {
  const testkit::TemporaryDirectory directory;
  const File file = testkit::file_of(testkit::one_of_each());
  testkit::write_file(file, directory / "a.fld");
  EXPECT_EQ(testkit::read_bytes(directory / "a.fld"), testkit::to_bytes(file));
}

TEST(FileWriter, ReportsWhatTheSystemRefuses) {
  const testkit::TemporaryDirectory directory;
  EXPECT_THROW(testkit::write_file(File(), directory / "missing/a.fld"), std::system_error);
  EXPECT_THROW(testkit::read_bytes(directory / "missing.fld"), std::system_error);
}

TEST(FileWriter, WritesSixGibibytesAsAHole) {
  const testkit::TemporaryDirectory directory;
  constexpr std::int64_t kValues = std::int64_t{6} << 28;  // 4 bytes each
  File file = testkit::file_of(testkit::one_tetrahedron());
  file.region_sets[0].add(testkit::scalar_section(
      {.name = "huge", .label = "Huge [-]", .values = testkit::Reals::hole(kValues)}));
  file.region_sets[0].add(testkit::scalar_section({.name = "p", .label = "l", .values = {1, 2, 3, 4}}));
  const auto path = directory / "sparse.fld";
  const testkit::Places places = testkit::write_file(file, path);
  struct stat status {};
  ASSERT_EQ(stat(path.c_str(), &status), 0);
  EXPECT_EQ(static_cast<std::uint64_t>(status.st_size), places.size);
  EXPECT_LT(static_cast<std::int64_t>(status.st_blocks) * 512, std::int64_t{1} << 20);
  // 1,610,612,736 values do not fit the largest payload of 2^31 - 1 bytes: three full records of 536,870,911
  // and 3 left.
  const testkit::Place& huge = places.of("LS_Scalar:huge");
  EXPECT_EQ(huge.end - huge.blocks[2], static_cast<std::uint64_t>(20 + 4 * kValues + 32 + 20));
  const testkit::Place& last = places.of("LS_Scalar:p");
  EXPECT_GT(last.offset, std::uint64_t{6} << 30);
  // A hole at the very end has its length too.
  File short_file;
  short_file.closer.reset();
  short_file.add_region_set().add(testkit::Section{.title = "LS_Hole", .end_rule = {}});
  Block hole = Block::integers(testkit::Ints::hole(100));
  hole.is_framed = false;
  short_file.region_sets[0].sections[0].blocks = {hole};
  const auto short_places = testkit::write_file(short_file, directory / "short.fld");
  EXPECT_EQ(testkit::read_bytes(directory / "short.fld"), testkit::to_bytes(short_file));
  EXPECT_EQ(std::filesystem::file_size(directory / "short.fld"), short_places.size);
}

TEST(TemporaryDirectory, GoesAwayWithWhatIsInIt) {
  std::filesystem::path path;
  {
    const testkit::TemporaryDirectory directory;
    path = directory.path();
    testkit::write_bytes(directory / "file", "content");
    EXPECT_TRUE(std::filesystem::exists(directory / "file"));
  }
  EXPECT_FALSE(std::filesystem::exists(path));
}

}  // namespace
