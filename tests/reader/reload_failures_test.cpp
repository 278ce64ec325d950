// Files of a series that can no longer be read when their step is selected.
#include <chrono>
#include <filesystem>
#include <string>

#include "testkit/byte_sink.h"
#include "tests/reader/loaded_reader.h"
#include "tests/reader/small_datasets.h"
#include "tests/reader/text_places.h"

namespace reader_test {
namespace {

using testkit::Block;

// Two files with three region sets each, whose node 0 is at x = 100 * cycle + region set.
class ReloadFailures : public LoadedReader {
 protected:
  void SetUp() override {
    for (const int cycle : {1, 2, 3}) write_step(cycle, file_of_step(cycle));
    open(path(1));
  }

  std::filesystem::path path(int cycle) const { return in("case_" + std::to_string(cycle) + ".fld"); }
  testkit::Places write_step(int cycle, const testkit::File& file) {
    return testkit::write_file(file, path(cycle));
  }

  static testkit::File file_of_step(int cycle) {
    testkit::File file = file_at(cycle);
    for (int g = 0; g < 3; ++g) {
      testkit::Mesh mesh = numbered_mesh(6 - g);
      mesh.nodes.x.values()[0] = 100.0 * cycle + g;
      add_triangle_surface(mesh, "wall", {3, 0, 2});
      file.add_region_set().add(testkit::mesh_sections(mesh));
    }
    return file;
  }

  // Node 0 of the three region sets.
  Floats marks() {
    Floats marks;
    for (const int part : {4, 5, 6}) marks.push_back(host.coordinates(part)[0][0]);
    return marks;
  }
  void expect_all_parts_served() {
    for (const int part : {1, 2, 3}) EXPECT_EQ((Rows{{3, 1, 2}}), host.rows(part, 6));
    for (const int part : {4, 5, 6}) EXPECT_EQ((Rows{{1, 2, 3, 4}}), host.rows(part, 14));
  }

  std::string failed(int cycle) const {
    return "FAILED TO READ GEOMETRY DATA IN " + path(cycle).string() + ".\n";
  }
};

TEST_F(ReloadFailures, FileThatIsGoneIsNamedTwice) {
  std::filesystem::remove(path(2));
  EXPECT_EQ(trace(path(2)) + "FAILED TO OPEN " + path(2).string() + "\n" + failed(2), select(1, 1));
  EXPECT_EQ((Floats{100, 101, 102}), marks());
  expect_all_parts_served();
}

TEST_F(ReloadFailures, OtherFileInItsPlaceIsNoFldFile) {
  testkit::write_bytes(path(2), "something else altogether, long enough");
  EXPECT_EQ(trace(path(2)) + "This is not FLD file.\n" + failed(2), select(1, 1));
  EXPECT_EQ((Floats{100, 101, 102}), marks());
  expect_all_parts_served();
}

TEST_F(ReloadFailures, OtherVersionInItsPlaceIsRefused) {
  testkit::File file = file_of_step(2);
  file.version = 5;
  write_step(2, file);
  EXPECT_EQ(trace(path(2)) + "FLD FILE VERSION HAS TO BE 4.\n" + failed(2), select(1, 1));
}

TEST_F(ReloadFailures, TwoDimensionsInItsPlaceAreRefused) {
  testkit::File file = file_of_step(2);
  file.header.set_dimension(2);
  write_step(2, file);
  EXPECT_EQ(trace(path(2)) + "L2D3D MUST BE 3 IN FLD\n" + failed(2), select(1, 1));
}

TEST_F(ReloadFailures, RegionSetsBeforeTheBrokenOneAreUpdatedAndLaterOnesAreNot) {
  testkit::File file = file_of_step(2);
  file.region_sets[1].section("LS_Nodes").blocks[0] = Block::integer(-1);
  const auto places = write_step(2, file);
  EXPECT_EQ(trace(path(2)) + trace(path(2)) + "ERROR : NEGATIVE COUNT -1 AT BYTE <inside>." + failed(2),
            with_byte_checked(select(1, 1), places.of("LS_Nodes", 1)));
  EXPECT_EQ((Floats{200, 101, 102}), marks());
  expect_all_parts_served();
}

TEST_F(ReloadFailures, FileThatBreaksOffIsReportedWithItsPlace) {
  const auto places = write_step(2, file_of_step(2));
  const auto size = places.of("LS_Nodes", 1).offset;
  std::filesystem::resize_file(path(2), size);
  EXPECT_EQ(trace(path(2)) + trace(path(2)) + "ERROR : UNEXPECTED END OF FILE AT BYTE " +
                std::to_string(size) + "." + failed(2),
            select(1, 1));
  EXPECT_EQ((Floats{200, 101, 102}), marks());
  expect_all_parts_served();
}

// The sections read before the failure are kept and must be servable.
TEST_F(ReloadFailures, PartOfABrokenRegionSetIsServedWithoutHarm) {
  testkit::File file = file_at(2);
  testkit::Mesh mesh = numbered_nodes(40);
  for (int first = 0; first < 32; first += 8) add_element(mesh, testkit::kHexahedron, first);
  add_triangle_surface(mesh, "wall", {39, 30, 31});
  for (int g = 0; g < 3; ++g) file.add_region_set().add(testkit::mesh_sections(mesh));
  file.region_sets[0].section("LS_Nodes").blocks.pop_back();
  write_step(2, file);
  const std::string text = select(1, 1);
  EXPECT_NE(std::string::npos, text.find(failed(2))) << text;
  // The elements and the surface are of the second file, the nodes still those of the first.
  EXPECT_EQ((PartInfo{1, 0, "wall", 0, {{6, 1}}}), host.part(1));
  EXPECT_EQ((Rows{{1, 1, 1}}), host.rows(1, 6));
  EXPECT_EQ((PartInfo{4, 0, "ALL_ELEMENTS", 6, {{26, 4}}}), host.part(4));
  EXPECT_EQ((Rows{{1, 2, 3, 4, 5, 6, 1, 1},
                  {1, 1, 1, 1, 1, 1, 1, 1},
                  {1, 1, 1, 1, 1, 1, 1, 1},
                  {1, 1, 1, 1, 1, 1, 1, 1}}),
            host.rows(4, 26));
  EXPECT_EQ((Floats{100, 101, 102}), marks());
}

// The surfaces are the second file's, the elements and volumes still those of the first.
TEST_F(ReloadFailures, IndexBaseOfAHalfReadStepIsTakenOffOnce) {
  for (const int cycle : {1, 2, 3}) {
    testkit::File file = file_of_step(cycle);
    file.header.set_bias(1);
    if (cycle == 2) file.region_sets[0].section("LS_Elements").blocks[0] = Block::integer(-1);
    write_step(cycle, file);
  }
  open(path(1));
  for (const int step : {1, 0, 1, 2, 1}) {
    select(1, step);
    expect_all_parts_served();
  }
}

// A partly read region set does not count as loaded, so going back reads the first file again.
TEST_F(ReloadFailures, StepBeforeABrokenOneIsServedAsEver) {
  testkit::File file = file_at(2);
  testkit::Mesh mesh = numbered_mesh(6);
  add_element(mesh, testkit::kTetrahedron, 1);
  add_triangle_surface(mesh, "wall", {3, 0, 2});
  for (int g = 0; g < 3; ++g) file.add_region_set().add(testkit::mesh_sections(mesh));
  file.region_sets[1].section("LS_Nodes").blocks.pop_back();
  write_step(2, file);
  select(1, 1);
  const Rows broken = {{1, 2, 3, 4}, {2, 3, 4, 5}};
  EXPECT_EQ(broken, host.rows(4, 14));
  EXPECT_EQ(broken, host.rows(5, 14)) << "elements come before nodes";
  EXPECT_EQ(trace(path(1)) + trace(path(1)), select(1, 0)) << "for the region sets 0 and 1";
  EXPECT_EQ((Floats{100, 101, 102}), marks());
  expect_all_parts_served();
}

TEST_F(ReloadFailures, FileThatIsGoneLeavesNothingToReadAgain) {
  std::filesystem::remove(path(2));
  select(1, 1);
  EXPECT_EQ("", select(1, 0));
  EXPECT_EQ((Floats{100, 101, 102}), marks());
}

TEST_F(ReloadFailures, NextStepIsServedInFull) {
  std::filesystem::remove(path(2));
  select(1, 1);
  EXPECT_EQ(trace(path(3)) + trace(path(3)) + trace(path(3)), select(1, 2));
  EXPECT_EQ((Floats{300, 301, 302}), marks());
  expect_all_parts_served();
}

TEST_F(ReloadFailures, StepIsReadAgainWhenItsFileIsBack) {
  std::filesystem::remove(path(2));
  select(1, 1);
  write_step(2, file_of_step(2));
  select(1, 1);
  EXPECT_EQ((Floats{200, 201, 202}), marks());
  expect_all_parts_served();
}

// Offsets from the opening do not matter for geometry.
TEST_F(ReloadFailures, FileWhoseHeaderGrewSinceTheOpeningIsReadAllTheSame) {
  testkit::File file = file_of_step(2);
  file.header.set(testkit::header_item("Comments", {Block::characters("a longer one", 500)}));
  write_step(2, file);
  EXPECT_EQ(trace(path(2)) + trace(path(2)) + trace(path(2)), select(1, 1));
  EXPECT_EQ((Floats{200, 201, 202}), marks());
}

// A long header is not read again for each region set, unless the file has changed.
TEST_F(ReloadFailures, LongHeaderOfAFileThatHasChangedIsCheckedAgain) {
  testkit::File file = file_of_step(2);
  file.header.set(testkit::header_item("Comments", {Block::characters("long", 10000)}));
  write_step(2, file);
  open(path(1));
  EXPECT_EQ(trace(path(2)) + trace(path(2)) + trace(path(2)), select(1, 1));
  EXPECT_EQ((Floats{200, 201, 202}), marks());
  select(1, 0);
  file.version = 5;
  write_step(2, file);
  // The file system's clock may not have advanced since the dataset was opened.
  std::filesystem::last_write_time(path(2),
                                   std::filesystem::last_write_time(path(2)) + std::chrono::seconds(10));
  EXPECT_EQ(trace(path(2)) + "FLD FILE VERSION HAS TO BE 4.\n" + failed(2), select(1, 1));
  file.version = 4;
  write_step(2, file);
  select(1, 1);
  EXPECT_EQ((Floats{200, 201, 202}), marks());
}

TEST_F(ReloadFailures, NothingIsLeaked) {
  testkit::File file = file_of_step(2);
  file.region_sets[1].section("LS_Elements").blocks[2] = Block::long_integer(-1);
  write_step(2, file);
  select(1, 1);
  EXPECT_EQ("", stderr_of([&] { api().exit_routine(); }));
}

}  // namespace
}  // namespace reader_test
