// Lengths that each fit in the file, but not together: memory must be bounded by a small multiple of the file
// size.
#include <cstdio>
#include <cstdlib>
#include <gtest/gtest.h>
#include <string>
#include <sys/resource.h>
#include <unistd.h>
#include <vector>

#include "format/ale.h"
#include "format/surface_geometry.h"
#include "format/volume_geometry.h"
#include "support/errors.h"
#include "tests/format/input.h"
#include "tests/support/empty_list.h"
#include "tests/support/thrown_message.h"

namespace {

using testkit::Block;
using testkit::Rule;

using HostileLengths = EmptyList;
using HostileLengthsDeathTest = EmptyList;

long peak_kilobytes() {
  rusage usage = {};
  getrusage(RUSAGE_SELF, &usage);
  return usage.ru_maxrss;
}

// Runs in a child process. The file may be read or refused.
template <class Read>
[[noreturn]] void exit_telling_memory(Read read, long most_kilobytes) {
  const long before = peak_kilobytes();
  try {
    read();
  } catch (const fld::FLDReadException&) {
  }
  const long grown = peak_kilobytes() - before;
  fprintf(stderr, "memory grew by %ld KB\n", grown);
  _exit(grown <= most_kilobytes ? 0 : 1);
}

std::string repeated(const std::string& bytes, int times) {
  std::string all;
  all.reserve(bytes.size() * static_cast<size_t>(times));
  for (int i = 0; i < times; ++i) all += bytes;
  return all;
}

// A megabyte and a half of regions whose names are announced to be long and are one character.
constexpr int kMany = 6000;
constexpr int kLongName = 400000;
constexpr long kMostKilobytes = 32 << 10;

std::string integer(int value) {
  return bytes_of(Block::integer(value));
}

TEST_F(HostileLengthsDeathTest, NamesOfSurfacesTakeOnlyWhatTheyHold) {
  const std::string region = bytes_of(Block::characters("x")) + integer(0) + bytes_of(Rule{4, 0, 0}) +
                             bytes_of(Rule{4, 0, 0}) + integer(0) + bytes_of(Rule{4, 0, 0});
  const Input input(integer(kMany) + integer(kLongName) + repeated(region, kMany) + bytes_of(Rule{}));
  std::vector<fld::smart_ptr<fld::SurfaceGeometry>> list;
  EXPECT_EXIT(exit_telling_memory([&] { fld::FLDV4_SurfaceGeometry(input.stream(), list); }, kMostKilobytes),
              testing::ExitedWithCode(0), "");
}

TEST_F(HostileLengthsDeathTest, NamesOfVolumesTakeOnlyWhatTheyHold) {
  const std::string region = bytes_of(Block::characters("x")) + integer(0) + bytes_of(Rule{4, 0, 0});
  const Input input(integer(kMany) + integer(kLongName) + repeated(region, kMany) + bytes_of(Rule{}));
  std::vector<fld::smart_ptr<fld::VolumeGeometry>> list;
  EXPECT_EXIT(exit_telling_memory([&] { fld::FLDV4_VolumeGeometry(input.stream(), list); }, kMostKilobytes),
              testing::ExitedWithCode(0), "");
}

TEST_F(HostileLengthsDeathTest, NamesOfMovingRegionsTakeOnlyWhatTheyHold) {
  const Input input(integer(kLongName) + integer(0) + integer(1) + integer(3 * kMany) +
                    repeated(bytes_of(Block::characters("x")), 3 * kMany) + integer(0) + bytes_of(Rule{}));
  fld::ALE ale;
  EXPECT_EXIT(exit_telling_memory([&] { fld::FLDV4_ALE(input.stream(), ale); }, kMostKilobytes),
              testing::ExitedWithCode(0), "");
}

TEST_F(HostileLengths, GatheredNamesBeyondThirtyTwoBitsAreAnError) {
  // The product exceeds a signed 32-bit integer, although the file (mostly a hole) is that long.
  for (const int regions : {1 << 15, 1 << 16}) {
    const std::string bytes = integer(regions) + integer(1 << 16) + bytes_of(Block::characters("x"));
    const Input input(bytes);
    ASSERT_EQ(ftruncate(fileno(input.stream()), (off_t{1} << 32) + 4096), 0);
    std::vector<fld::smart_ptr<fld::VolumeGeometry>> list;
    EXPECT_EQ(thrown_message([&] { fld::FLDV4_VolumeGeometryArray(input.stream(), list); }),
              "TOO MANY CHARACTERS IN REGION NAMES.");
  }
}

TEST_F(HostileLengths, GatheredNamesBeyondTheFileAreAnError) {
  const Input input(integer(100) + integer(100) + bytes_of(Block::characters("x")) + std::string(9000, '\0'));
  std::vector<fld::smart_ptr<fld::VolumeGeometry>> list;
  EXPECT_EQ(thrown_message([&] { fld::FLDV4_VolumeGeometryArray(input.stream(), list); }).substr(0, 12),
            "COUNT 10000 ");
}

TEST_F(HostileLengths, CountsThatTogetherAreBeyondTheFileAreAnError) {
  // Each of the ten counts could stand in the rest of the file.
  const std::string bytes = integer(10) + integer(1) + bytes_of(Block::characters(std::string(10, 'x'))) +
                            bytes_of(Block::integers(std::vector<int>(10, 2000))) + std::string(9000, '\0');
  const Input input(bytes);
  std::vector<fld::smart_ptr<fld::VolumeGeometry>> list;
  EXPECT_NE(thrown_message([&] { fld::FLDV4_VolumeGeometryArray(input.stream(), list); }),
            "nothing was thrown");
}

}  // namespace
