// Files of a megabyte with as many items of one kind as fit: the time of a call is proportional to the file
// size, not to the product of two counts.
#include <array>
#include <cstdint>
#include <ctime>
#include <filesystem>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

#include "host/element_slots.h"
#include "host/library.h"
#include "testkit/byte_sink.h"
#include "testkit/file_writer.h"
#include "testkit/temporary_directory.h"
#include "tests/faults/stderr_file.h"
#include "tests/faults/whole_session.h"
#include "tests/reader/small_datasets.h"
#include "tests/testkit/emulator.h"

namespace faults {
namespace {

using reader_test::motion_of;
using testkit::MovingRegion;

constexpr int kGeometrySet = 1;
// Limit in seconds of CPU time per call; the sanitizers are slower, and an emulator more so.
#ifdef __SANITIZE_ADDRESS__
constexpr double kLimit = 4.0;
#else
constexpr double kLimit = kUnderEmulator ? 20.0 : 1.0;
#endif

class HostileSizes : public testing::Test {
 protected:
  ~HostileSizes() override { api_.exit_routine(); }

  // A file of the dataset; "case_0.fld", "case_1.fld" ... make a series.
  void write(const std::string& name, const std::string& bytes) { testkit::write_bytes(in(name), bytes); }
  std::filesystem::path in(const std::string& name) const { return directory_ / name; }
  void write(const std::string& name, const testkit::File& file) { write(name, testkit::to_bytes(file)); }

  // Expects that the call stays within the limit.
  template <class Call>
  void expect_in_time(const std::string& what, Call call) {
    const std::clock_t start = std::clock();
    call();
    const double seconds = static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
    EXPECT_GT(kLimit, seconds) << what;
    RecordProperty(what, std::to_string(seconds));
  }

  void expect_session_in_time(const std::string& name) {
    expect_in_time("session", [&] {
      const Ending ending = whole_session(api_, in(name));
      EXPECT_TRUE(ending.is_open) << ending.detail;
    });
  }

  void expect_opened_in_time(const std::string& name) {
    std::string path = in(name);
    std::string none;
    expect_in_time("opening",
                   [&] { EXPECT_EQ(1, api_.set_filenames(path.data(), none.data(), none.data(), 0)); });
  }

  // Goes to each step in turn.
  void expect_steps_in_time(const std::vector<int>& steps) {
    expect_in_time("steps", [&] {
      for (const int step : steps) api_.set_time_set_and_step(kGeometrySet, step);
    });
  }

  // Requests the parts several times, as a host does at every step. All parts share the same arrays.
  void expect_parts_in_time(int times) {
    const int parts = api_.get_number_of_model_parts();
    ASSERT_LT(0, parts);
    const auto count = static_cast<std::size_t>(parts);
    std::vector<int> ids(count);
    std::vector<int> types(count);
    std::vector<int> nodes(count);
    std::array<char, 80> text{};
    std::array<int, host::kElementSlots> slots{};
    std::vector<char*> descriptions(count, text.data());
    std::vector<int*> elements(count, slots.data());
    expect_in_time("parts", [&] {
      for (int i = 0; i < times; ++i) {
        api_.get_gold_part_build_info(ids.data(), types.data(), descriptions.data(), nodes.data(),
                                      elements.data(), nullptr, nullptr);
      }
    });
    EXPECT_EQ(parts, ids.back());
  }

 private:
  StderrFile silence_;
  testkit::TemporaryDirectory directory_;
  host::Library library_{FLD_THROWING_PLUGIN_FILE};

 protected:
  const host::EntryPoints& api_ = library_.entry_points();
};

// `file` with `count` empty region sets added.
testkit::File with_empty_region_sets(testkit::File file, int count) {
  for (int i = 0; i < count; ++i) file.add_region_set().add(testkit::nodes_section({}));
  return file;
}

TEST_F(HostileSizes, RegionSetsOfNothing) {
  write("empty.fld", with_empty_region_sets(reader_test::file_at(0), 5000));
  expect_opened_in_time("empty.fld");
  expect_parts_in_time(60);
  expect_session_in_time("empty.fld");
}

// The first file has hundreds of thousands of volumes; the later steps replace its region sets.
TEST_F(HostileSizes, StepsOfManyRegionSetsOnceThereWereManyParts) {
  testkit::Mesh mesh = testkit::one_tetrahedron();
  for (const int cycle : {0, 1, 2}) {
    mesh.volumes.assign(cycle == 0 ? 400000 : 1, {});
    testkit::File file = reader_test::file_at(cycle);
    file.add_region_set().add(testkit::mesh_sections(mesh, {.volume_form = testkit::RegionForm::kArray}));
    write("case_" + std::to_string(cycle) + ".fld", with_empty_region_sets(std::move(file), 1500));
  }
  expect_opened_in_time("case_0.fld");
  expect_steps_in_time({1, 2, 1, 2, 1, 2});
}

// Every element of an unknown type is reported with a message of its own.
TEST_F(HostileSizes, ElementsOfUnknownTypes) {
  testkit::Mesh mesh = testkit::one_tetrahedron();
  mesh.elements.type = std::vector<std::int32_t>(std::size_t{1} << 18, 99);
  mesh.elements.conn = testkit::Ints{};
  mesh.materials = {};
  write("types.fld", testkit::file_of(mesh));
  expect_session_in_time("types.fld");
}

TEST_F(HostileSizes, LongHeaderBeforeManyRegionSets) {
  testkit::File file = with_empty_region_sets(testkit::file_of(testkit::one_tetrahedron()), 2500);
  testkit::Section comments = testkit::header_item("Comments", {});
  comments.blocks.assign(25000, testkit::Block::rule_alone({4, 1, 0}));
  file.header.set(comments);
  write("header.fld", file);
  expect_session_in_time("header.fld");
}

// Reading a motion takes its name as one record; skipping it takes as many records as the rule announces, up
// to the end of the file.
TEST_F(HostileSizes, MotionsThatEndElsewhereWhenTheyAreSteppedOver) {
  testkit::File file = testkit::file_of(testkit::one_tetrahedron());
  testkit::Section motion = motion_of(0, {{.names = {"a"}}});
  motion.blocks[4] = motion.blocks[4].with_rule({1, 1, 2147483647});
  for (int i = 0; i < 5000; ++i) file.region_sets[0].add(motion);
  write("motions.fld", file);
  expect_in_time("session", [&] {
    const Ending ending = whole_session(api_, in("motions.fld"));
    EXPECT_FALSE(ending.is_open);
    EXPECT_EQ(Outcome::kException, ending.outcome) << ending.detail;
  });
}

// Each step changes the elements of every region set.
TEST_F(HostileSizes, StepsOfManyRegionSetsThatDoNotFit) {
  for (const int cycle : {0, 1}) {
    testkit::Mesh mesh = reader_test::numbered_mesh(4);
    testkit::File file = reader_test::file_at(cycle);
    for (int i = 0; i < 2500; ++i) {
      mesh.elements = {};
      for (const bool is_odd : {i % 2 != 0, true}) {
        reader_test::add_element(mesh, is_odd == (cycle == 0) ? testkit::kPrism : testkit::kPyramid, 0);
      }
      file.add_region_set().add(
          {testkit::elements_section(mesh.elements), testkit::nodes_section(mesh.nodes)});
    }
    write("case_" + std::to_string(cycle) + ".fld", file);
  }
  expect_opened_in_time("case_0.fld");
  expect_steps_in_time({1, 0, 1, 0});
}

// A series with the mesh in the first file and the motion in the second.
class HostileMotions : public HostileSizes {
 protected:
  // Selects the step of the motion this many times.
  void expect_moved_in_time(const testkit::Mesh& mesh, std::vector<MovingRegion> regions,
                            std::size_t times = 1) {
    testkit::File base = reader_test::file_at(0);
    base.add_region_set().add(testkit::mesh_sections(mesh, {.volume_form = testkit::RegionForm::kArray}));
    write("case_0.fld", base);
    testkit::File moved = reader_test::file_at(1);
    moved.add_region_set().add(motion_of(0, std::move(regions)));
    write("case_1.fld", moved);
    expect_opened_in_time("case_0.fld");
    expect_steps_in_time(std::vector<int>(times, 1));
  }

  static std::vector<MovingRegion> regions_named(std::size_t count, const std::string& name) {
    return {count, {.names = {name}, .actions = {}}};
  }

  // A mesh with this many nodes and elements, all in the volume "all".
  static testkit::Mesh mesh_of(int nodes, int elements) {
    testkit::Mesh mesh = reader_test::numbered_nodes(nodes);
    std::vector<std::int32_t> all;
    for (int e = 0; e < elements; ++e) {
      reader_test::add_element(mesh, testkit::kTetrahedron, e);
      all.push_back(e);
    }
    reader_test::add_volume(mesh, "all", all);
    return mesh;
  }
};

TEST_F(HostileMotions, NamesAgainstVolumes) {
  testkit::Mesh mesh = mesh_of(4, 1);
  mesh.volumes.resize(100000, {.name = "none"});
  expect_moved_in_time(mesh, {{.names = std::vector<std::string>(17000, "else"), .actions = {}}});
}

TEST_F(HostileMotions, NamesOfTheSameVolume) {
  expect_moved_in_time(mesh_of(40000, 39000),
                       {{.names = std::vector<std::string>(30000, "all"), .actions = {}}});
}

TEST_F(HostileMotions, RegionsOfTheSameVolume) {
  expect_moved_in_time(mesh_of(40000, 39000), regions_named(15000, "all"));
}

TEST_F(HostileMotions, RegionsOfNoVolume) {
  expect_moved_in_time(mesh_of(80000, 1), regions_named(10000, "none"), 100);
}

TEST_F(HostileMotions, RegionsOfFewNodes) {
  testkit::Mesh mesh = mesh_of(80000, 10000);
  std::vector<MovingRegion> regions;
  for (int i = 0; i < 10000; ++i) {
    const std::string name = std::to_string(10000 + i);
    reader_test::add_volume(mesh, name, {i});
    regions.push_back({.names = {name}, .actions = {}});
  }
  expect_moved_in_time(mesh, std::move(regions), 20);
}

}  // namespace
}  // namespace faults
