// Memory is bounded by a small multiple of the file size.
#include <cstdlib>
#include <fstream>
#include <string>
#include <sys/resource.h>

#include "dataset/fld.h"
#include "tests/dataset/dataset_test.h"
#include "tests/testkit/emulator.h"

namespace fld {
namespace {

using testkit::Block;
using testkit::Rule;
using testkit::Section;

constexpr long kMebibyte = 1024;  // in the unit of this file

// The peak address space of this process, in KiB.
long peak_memory() {
  std::ifstream status("/proc/self/status");
  std::string word;
  while (status >> word) {
    if (word != "VmPeak:") continue;
    long kibibytes = 0;
    status >> kibibytes;
    return kibibytes;
  }
  ADD_FAILURE() << "no VmPeak in /proc/self/status";
  return 0;
}

// Opens the dataset and reads its first region set in a child process. Its message goes to stderr, and it
// exits with 0 if it needed no more than `limit`.
[[noreturn]] void read_within(const std::string& path, long limit) {
  const long before = peak_memory();
  try {
    FLD fld;
    FLDGEO geo;
    if (fld.searchFLD(path.c_str()) == 0) fld.m_fld.at(0).readGeometry(0, geo);
  } catch (const FLDException& error) {
    fprintf(stderr, "%s", error.getMessage());
  }
  const long needed = peak_memory() - before;
  if (needed > limit) fprintf(stderr, " took %ld KiB", needed);
  _Exit(needed > limit ? 1 : 0);
}

#define EXPECT_READ_WITHIN(path, limit, message) \
  EXPECT_EXIT(read_within(path, limit), testing::ExitedWithCode(0), message)

class MemoryDeathTest : public testing::Test {
 protected:
  void SetUp() override {
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
    GTEST_SKIP() << "sanitizers take their address space at once";
#endif
  }

  // A file with the nodes of a tetrahedron, the sections, and then `filling` unused bytes.
  std::string write(const std::vector<Section>& sections, size_t filling = 0) {
    testkit::File file;
    testkit::RegionSet& set = file.add_region_set();
    set.add(testkit::nodes_section(testkit::one_tetrahedron().nodes));
    set.add(sections);
    file.trailing_bytes.assign(filling, '\0');
    return test::write(directory_, "a.fld", file);
  }
  // A block of one record without characters.
  static Block empty_name() {
    Block name = Block::raw(std::string("\0\0\0\x0c\0\0\0\x01\0\0\0\0\0\0\0\x01\0\0\0\x0c", 20));
    std::get<std::string>(name.data).append(8, '\0');
    return name;
  }

  testkit::TemporaryDirectory directory_;
};

TEST_F(MemoryDeathTest, HostileCountsTakeNone) {
  for (const char* title : {"LS_Elements", "LS_MatOfElements", "LS_Nodes"}) {
    const std::string path =
        write({Section{.title = title, .blocks = {Block::integer(2147483647), Block::integer(1)}}});
    EXPECT_READ_WITHIN(path, 4 * kMebibyte, "ERROR : COUNT 2147483647 EXCEEDS THE REST OF THE FILE");
  }
  for (const char* title :
       {"LS_SurfaceGeometry", "LS_SurfaceGeometryArray", "LS_VolumeGeometry", "LS_VolumeGeometryArray"}) {
    const std::string path =
        write({Section{.title = title, .blocks = {Block::integer(2147483647), Block::integer(1)}}});
    EXPECT_READ_WITHIN(path, 4 * kMebibyte, "ERROR : COUNT 2147483647 EXCEEDS THE REST OF THE FILE");
  }
}

TEST_F(MemoryDeathTest, LongNamesOfManyRegionsThatAreNotThereTakeNone) {
  Section volumes{.title = "LS_VolumeGeometry", .blocks = {Block::integer(700), Block::integer(100000)}};
  for (int region = 0; region < 700; ++region) {
    volumes.blocks.push_back(empty_name());
    volumes.blocks.push_back(Block::integer(0));
    volumes.blocks.push_back(Block::integers({}));
  }
  EXPECT_READ_WITHIN(write({volumes}, 100000), 16 * kMebibyte, "");
}

TEST_F(MemoryDeathTest, LongNamesOfMovingRegionsThatAreNotThereTakeNone) {
  Section motion{
      .title = "LS_ALE",
      .blocks = {Block::integer(100000), Block::integer(0), Block::integer(1), Block::integer(1500)}};
  for (int name = 0; name < 1500; ++name) motion.blocks.push_back(empty_name());
  motion.blocks.push_back(Block::integer(0));
  EXPECT_READ_WITHIN(write({motion}, 100000), 16 * kMebibyte, "");
}

// Regions whose arrays have this rule and no records.
Section surfaces_without_records(const Rule& rule, const Block& name) {
  Section surfaces{.title = "LS_SurfaceGeometry", .blocks = {Block::integer(600), Block::integer(1)}};
  for (int region = 0; region < 600; ++region) {
    surfaces.blocks.push_back(name);
    for (const int arrays : {2, 1}) {
      surfaces.blocks.push_back(Block::integer(25000));
      for (int k = 0; k < arrays; ++k) surfaces.blocks.push_back(Block::rule_alone(rule));
    }
  }
  return surfaces;
}

TEST_F(MemoryDeathTest, ArraysWithoutRecordsTakeNone) {
  EXPECT_READ_WITHIN(write({surfaces_without_records({4, 25000, 0}, empty_name())}, 110000), 16 * kMebibyte,
                     "");
}

TEST_F(MemoryDeathTest, ArraysOfANegativeNumberOfRecordsOfNegativeSizeTakeNone) {
  EXPECT_READ_WITHIN(write({surfaces_without_records({4, -1000, -1000}, empty_name())}, 110000),
                     16 * kMebibyte, "");
}

TEST_F(MemoryDeathTest, AsManyRegionsAsTheFileCouldHoldTakeWhatRegionsTake) {
  // The filling could be the element counts of 100000 volume regions.
  const std::string path = write(
      {Section{.title = "LS_VolumeGeometryArray", .blocks = {Block::integer(100000), Block::integer(0)}}},
      400000);
  EXPECT_READ_WITHIN(path, 100000 * 256 / 1024, "ERROR : ");
}

// Limits this process to 64 MiB more than it has, and reads the dataset.
[[noreturn]] void read_with_little_memory(const std::string& path) {
  FLD fld;
  int status = fld.searchFLD(path.c_str());
  const auto limit = static_cast<rlim_t>(peak_memory() + 64 * kMebibyte) * 1024;
  const rlimit limits = {limit, limit};
  setrlimit(RLIMIT_AS, &limits);
  FLDGEO geo;
  if (status == 0) status = fld.m_fld.at(0).readGeometry(0, geo);
  _Exit(-status);
}

TEST_F(MemoryDeathTest, ExhaustedMemoryIsMinus5) {
  if (kUnderEmulator) GTEST_SKIP() << "qemu-user does not limit memory";
  testkit::Nodes nodes;
  nodes.x = nodes.y = nodes.z = testkit::Reals::hole(1 << 26);  // 256 MiB each
  EXPECT_EXIT(read_with_little_memory(write({testkit::nodes_section(nodes)})), testing::ExitedWithCode(5),
              "ERROR : NOT ENOUGH MEMORY$");
}

}  // namespace
}  // namespace fld
