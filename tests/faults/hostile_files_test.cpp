// Damaged files, one after another in one process: the result is documented, within the limits of time and
// memory, and the next dataset is served as before.
#include <array>
#include <gtest/gtest.h>
#include <iostream>
#include <string>
#include <string_view>

#include "testkit/byte_sink.h"
#include "testkit/file_writer.h"
#include "testkit/small_meshes.h"
#include "tests/faults/damage.h"
#include "tests/faults/fault_datasets.h"
#include "tests/faults/memory_meter.h"
#include "tests/faults/stderr_file.h"
#include "tests/faults/sweep.h"

namespace faults {
namespace {

// The strides are coprime to the periods of the damages, so that a sample has all kinds.
constexpr std::size_t kEveryByte = 41;
constexpr std::size_t kEveryBit = 331;
constexpr std::size_t kEveryWord = 79;
constexpr std::size_t kEveryMarker = 17;

// The least number of damages of a family for a file of this size.
struct Least {
  std::size_t bytes;
  std::size_t words;
  std::size_t markers;
  std::size_t sections;
};
constexpr Least kOfEveryConstruct = {.bytes = 8000, .words = 15000, .markers = 5000, .sections = 90};
constexpr Least kOfSecondFile = {.bytes = 3000, .words = 5800, .markers = 1800, .sections = 45};

class HostileFile : public testing::Test {
 protected:
  HostileFile() : bytes_(testkit::to_bytes(every_construct(), &places_)) {}

  void sweep(const Damages& damages, std::size_t least, std::size_t partial,
             const SessionOptions& options = {}) {
    const Tally tally = sweep_.run(damages, "hostile.fld", sweep_stride(partial), options);
    EXPECT_LE(least / sweep_stride(partial), tally.cases);
    std::cout << tally.text() << '\n';
  }

  testkit::Places places_;
  std::string bytes_;

 private:
  Sweep sweep_;
};

TEST_F(HostileFile, EveryConstructIsUnder20KilobytesAndServed) {
  EXPECT_LT(bytes_.size(), 20000U);
  const host::Library library(FLD_THROWING_PLUGIN_FILE);
  testkit::TemporaryDirectory directory;
  testkit::write_file(every_construct(), directory / "whole.fld");
  StderrFile silence;
  const Ending ending = whole_session(library.entry_points(), directory / "whole.fld");
  EXPECT_TRUE(ending.is_open) << silence.take();
  EXPECT_EQ(Outcome::kServed, ending.outcome) << ending.detail;
}

TEST_F(HostileFile, CutOffAnywhere) {
  sweep(Truncations(bytes_), kOfEveryConstruct.bytes, kEveryByte);
}

TEST_F(HostileFile, AnyBitFlipped) {
  sweep(BitFlips(bytes_), 8 * kOfEveryConstruct.bytes, kEveryBit);
}

TEST_F(HostileFile, AnyWordExtreme) {
  sweep(WordChanges::extremes(bytes_), kOfEveryConstruct.words, kEveryWord);
}

TEST_F(HostileFile, AnyMarkerWrong) {
  sweep(WordChanges::markers(bytes_), kOfEveryConstruct.markers, kEveryMarker);
}

TEST_F(HostileFile, AnySectionMissingDoubledOrMoved) {
  sweep(SectionMoves(bytes_, places_), kOfEveryConstruct.sections, 1);
}

TEST_F(HostileFile, AnySectionMissingDoubledOrMovedWithoutGroups) {
  sweep(SectionMoves(bytes_, places_), kOfEveryConstruct.sections, 1,
        {.simplify_sequential = true, .group_parts = false});
}

// An empty region takes a few bytes in a file and much more in memory. The host's own lists of parts do not
// count, so only opening and the part groups are measured.
class HostileRegions : public testing::Test {
 protected:
  void expect_served_within_the_limit(const testkit::Mesh& mesh) {
    const std::string bytes = testkit::to_bytes(testkit::file_of(
        mesh, {.surface_form = testkit::RegionForm::kArray, .volume_form = testkit::RegionForm::kArray}));
    const testkit::TemporaryDirectory directory;
    std::string path = directory / "regions.fld";
    testkit::write_bytes(path, bytes);
    const host::Library library(FLD_THROWING_PLUGIN_FILE);
    const host::EntryPoints& api = library.entry_points();
    std::array<int, 2> group_parts = {0, 1};
    api.set_extra_gui_data(group_parts.data(), nullptr, nullptr);
    std::string none;
    StderrFile silence;
    const std::ptrdiff_t limit = (16 << 20) + 8 * static_cast<std::ptrdiff_t>(bytes.size());
    const MemoryMeter memory;
    EXPECT_EQ(1, api.set_filenames(path.data(), none.data(), none.data(), 0)) << silence.take();
    EXPECT_GE(limit, memory.peak()) << "opening";
    EXPECT_LE(static_cast<int>(kRegions), api.get_number_of_model_parts());

    const std::ptrdiff_t held = memory.held();
    const MemoryMeter memory_for_length;
    int length = 0;
    EXPECT_EQ(1, api.get_metadata(&length, nullptr));
    EXPECT_GE(limit, held + memory_for_length.peak()) << "length of the part groups";
    std::string text(static_cast<std::size_t>(length) + 1, '?');
    const MemoryMeter memory_for_text;
    EXPECT_EQ(1, api.get_metadata(&length, text.data()));
    EXPECT_GE(limit, held + memory_for_text.peak()) << "text of the part groups";
    EXPECT_EQ(static_cast<std::size_t>(length), text.find('\0'));
    EXPECT_LE(kRegions * std::string_view("<part name=\"\"></part>").size(), text.size());
    api.exit_routine();
  }

  static constexpr std::size_t kRegions = 100000;
};

TEST_F(HostileRegions, VolumesOfNothing) {
  testkit::Mesh mesh = testkit::one_tetrahedron();
  mesh.volumes.assign(kRegions, {});
  expect_served_within_the_limit(mesh);
}

TEST_F(HostileRegions, SurfacesOfNothing) {
  testkit::Mesh mesh = testkit::one_tetrahedron();
  mesh.surfaces.assign(kRegions, {});
  expect_served_within_the_limit(mesh);
}

// A damaged second file of a series whose first file is valid.
class HostileSeries : public testing::TestWithParam<bool> {
 protected:
  HostileSeries() : bytes_(testkit::to_bytes(motion_of_series(), &places_)) {
    testkit::write_file(base_of_series(), sweep_.in("case_0.fld"));
  }

  void sweep(const Damages& damages, std::size_t least, std::size_t partial) {
    const Tally tally =
        sweep_.run(damages, "case_1.fld", sweep_stride(partial), {.simplify_sequential = GetParam()});
    EXPECT_LE(least / sweep_stride(partial), tally.cases);
    std::cout << tally.text() << '\n';
  }

  testkit::Places places_;
  std::string bytes_;

 private:
  Sweep sweep_;
};

TEST_P(HostileSeries, CutOffAnywhere) {
  sweep(Truncations(bytes_), kOfSecondFile.bytes, kEveryByte);
}

TEST_P(HostileSeries, AnyBitFlipped) {
  sweep(BitFlips(bytes_), 8 * kOfSecondFile.bytes, kEveryBit);
}

TEST_P(HostileSeries, AnyWordExtreme) {
  sweep(WordChanges::extremes(bytes_), kOfSecondFile.words, kEveryWord);
}

TEST_P(HostileSeries, AnyMarkerWrong) {
  sweep(WordChanges::markers(bytes_), kOfSecondFile.markers, kEveryMarker);
}

TEST_P(HostileSeries, AnySectionMissingDoubledOrMoved) {
  sweep(SectionMoves(bytes_, places_), kOfSecondFile.sections, 1);
}

INSTANTIATE_TEST_SUITE_P(BothWays, HostileSeries, testing::Bool(),
                         [](const auto& info) { return info.param ? "Simplified" : "Full"; });

}  // namespace
}  // namespace faults
