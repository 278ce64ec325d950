// Opening after an opening, successful or not, and after the exit routine.
#include <filesystem>
#include <functional>
#include <string>

#include "testkit/byte_sink.h"
#include "tests/reader/loaded_reader.h"
#include "tests/reader/small_datasets.h"

namespace reader_test {
namespace {

using testkit::Block;
using testkit::file_of;

// The first dataset: two region sets with different elements, a surface and a volume, and a scalar and a
// vector in two steps, the second of which has its own nodes.
testkit::File first_dataset(int cycle) {
  testkit::Mesh mesh = numbered_nodes(9);
  add_element(mesh, testkit::kHexahedron, 1);
  add_element(mesh, testkit::kTetrahedron, 0);
  mesh.materials = {3, 4};
  add_triangle_surface(mesh, "wall", {8, 2, 5});
  add_volume(mesh, "fluid", {1, 0});
  mesh.nodes.x.values()[8] = 10.0 * cycle;
  testkit::File file = file_at(cycle, {mesh, numbered_mesh(5)});
  for (auto& set : file.region_sets) {
    set.add(numbered_scalar("T", 9, 1000.0 * cycle));
    set.add(numbered_vector("U", 9, 2000.0 * cycle));
  }
  return file;
}

class OpeningAgain : public LoadedReader {
 protected:
  void open_first_dataset() {
    for (const int cycle : {1, 2}) write(first_dataset(cycle), "first_" + std::to_string(cycle) + ".fld");
    open(in("first_1.fld"));
  }

  // All answers of the first dataset at both steps.
  void expect_first_dataset() {
    EXPECT_EQ((std::vector<PartInfo>{{1, 0, "wall", 3, {{6, 1}}},
                                     {2, 0, "fluid", 9, {{14, 1}, {26, 1}}},
                                     {3, 0, "ALL_ELEMENTS", 9, {{14, 1}, {26, 1}}},
                                     {4, 0, "ALL_ELEMENTS", 5, {{14, 1}}}}),
              host.parts());
    EXPECT_EQ((std::vector<VariableInfo>{{"T (T)", 1, 4}, {"U (U)", 2, 4}, {"MatOfElements", 1, 1}}),
              host.variables());
    for (const int step : {1, 0}) {
      select(1, step);
      const float cycle = static_cast<float>(step + 1);
      EXPECT_EQ((Floats{2.0F, 5.0F, 10.0F * cycle}), x_of(host.coordinates(1)));
      EXPECT_EQ((Rows{{3, 1, 2}}), host.rows(1, 6));
      EXPECT_EQ((Rows{{2, 3, 4, 5, 6, 7, 8, 9}}), host.rows(2, 26));
      EXPECT_EQ((Rows{{1, 2, 3, 4}}), host.rows(4, 14));
      EXPECT_EQ((Floats{4.0F}), host.materials(2, 14));
      select(2, step);
      EXPECT_EQ((Floats{1000.0F * cycle + 2.0F, 1000.0F * cycle + 5.0F, 1000.0F * cycle + 8.0F}),
                host.scalar(1, 1));
      EXPECT_EQ(2000.0F * cycle + 205.0F, host.vector(2, 1, 2)[1]);
    }
  }
};

TEST_F(OpeningAgain, SecondDatasetTakesThePlaceOfTheFirst) {
  open_first_dataset();
  open(write(file_of(testkit::one_tetrahedron()), "second.fld"));
  EXPECT_EQ((std::vector<std::string>{"wall", "fluid", "ALL_ELEMENTS"}), host.part_names());
  EXPECT_EQ(1, api().get_num_of_time_steps(2));
  EXPECT_EQ(1, api().get_number_of_variables());
  EXPECT_EQ((Rows{{1, 2, 3, 4}}), host.rows(2, 14));
}

TEST_F(OpeningAgain, LargerDatasetAfterASmallerOneIsServedInFull) {
  open(write(file_of(numbered_mesh(4)), "small.fld"));
  testkit::Mesh mesh = numbered_nodes(1000);
  for (int first = 0; first + 8 <= 1000; first += 8) add_element(mesh, testkit::kHexahedron, first);
  std::vector<std::int32_t> last = {124};
  add_volume(mesh, "end", last);
  open(write(file_of(mesh), "large.fld"));
  EXPECT_EQ((Rows{{1, 2, 3, 4, 5, 6, 7, 8}}), host.rows(1, 26));
  EXPECT_EQ((Floats{992, 993, 994, 995, 996, 997, 998, 999}), x_of(host.coordinates(1)));
}

TEST_F(OpeningAgain, SameDatasetCanBeOpenedManyTimes) {
  open_first_dataset();
  for (int i = 0; i < 50; ++i) open(in("first_2.fld"));
  expect_first_dataset();
}

// The same file name, step and quantity name, but another dataset.
TEST_F(OpeningAgain, ValuesOfTheDatasetBeforeAreNeverServed) {
  testkit::File file = file_of(numbered_mesh(4));
  file.region_sets[0].add(numbered_scalar("T", 4, 10.0));
  file.region_sets[0].add(numbered_vector("U", 4, 20.0));
  write_and_open(file);
  EXPECT_EQ((Floats{10, 11, 12, 13}), host.scalar(1, 1));
  EXPECT_EQ((Floats{20, 21, 22, 23}), host.vector(2, 1, 0));

  file = file_of(numbered_mesh(4));
  file.region_sets[0].add(numbered_scalar("T", 4, 30.0));
  file.region_sets[0].add(numbered_vector("U", 4, 40.0));
  write_and_open(file);
  EXPECT_EQ((Floats{30, 31, 32, 33}), host.scalar(1, 1));
  EXPECT_EQ((Floats{40, 41, 42, 43}), host.vector(2, 1, 0));
}

TEST_F(OpeningAgain, AfterTheExit) {
  open_first_dataset();
  EXPECT_EQ("", stderr_of([&] { api().exit_routine(); }));
  open_first_dataset();
  expect_first_dataset();
}

TEST_F(OpeningAgain, AfterTheExitTwice) {
  open_first_dataset();
  EXPECT_EQ("", stderr_of([&] {
              api().exit_routine();
              api().exit_routine();
            }));
  open_first_dataset();
  expect_first_dataset();
}

TEST_F(OpeningAgain, AfterAnExitBeforeAnyOpening) {
  EXPECT_EQ("", stderr_of([&] { api().exit_routine(); }));
  open_first_dataset();
  expect_first_dataset();
}

TEST_F(OpeningAgain, AfterAFailureBeforeAnyOpening) {
  stderr_of([&] { EXPECT_EQ(-1, host.open(in("missing.fld"))); });
  EXPECT_EQ(0, host.part_count());
  open_first_dataset();
  expect_first_dataset();
}

TEST_F(OpeningAgain, AfterAFailureAndAnExit) {
  open_first_dataset();
  stderr_of([&] { EXPECT_EQ(-1, host.open(write(file_of(numbered_nodes(100)), "bare.fld"))); });
  EXPECT_EQ("", stderr_of([&] { api().exit_routine(); }));
  open_first_dataset();
  expect_first_dataset();
}

// Blocks of the first dataset are freed while the list is that of the second, and vice versa.
TEST_F(OpeningAgain, NothingIsReportedAsLeakedAfterSeveralDatasets) {
  open_first_dataset();
  host.scalar(1, 1);
  host.vector(2, 1, 0);
  open(write(file_of(testkit::one_of_each()), "second.fld"));
  stderr_of([&] { EXPECT_EQ(-1, host.open(write(file_of(numbered_nodes(100)), "bare.fld"))); });
  EXPECT_EQ("", stderr_of([&] { api().exit_routine(); }));
}

TEST_F(OpeningAgain, SelectedStepOutlivesTheDataset) {
  open_first_dataset();
  select(2, 1);
  open(in("first_1.fld"));
  EXPECT_EQ(2000.0F, host.scalar(1, 3)[0]) << "the second file's value at node 0";
}

// Files that fail to open, each at another point.
struct Failure {
  std::string name;
  std::function<void(const std::filesystem::path& path)> write;
  bool throws = false;
};

class FailingOpening : public OpeningAgain, public testing::WithParamInterface<Failure> {};
void PrintTo(const Failure& failure, std::ostream* out) {
  *out << failure.name;
}

TEST_P(FailingOpening, KeepsTheDatasetBeforeUsable) {
  open_first_dataset();
  expect_first_dataset();
  GetParam().write(in("failing.fld"));
  if (GetParam().throws) {
    EXPECT_ANY_THROW(stderr_of([&] { host.open(in("failing.fld")); }));
  } else {
    stderr_of([&] { EXPECT_EQ(-1, host.open(in("failing.fld"))); });
  }
  expect_first_dataset();
  EXPECT_EQ("", stderr_of([&] { api().exit_routine(); }));
}

TEST_P(FailingOpening, KeepsTheCachedValuesAndTheSelectedPart) {
  open_first_dataset();
  const Floats before = host.scalar(1, 1);
  const Points points = host.coordinates(1);
  GetParam().write(in("failing.fld"));
  try {
    stderr_of([&] { host.open(in("failing.fld")); });
  } catch (...) {
    EXPECT_TRUE(GetParam().throws);
  }
  EXPECT_EQ(points, host.coordinates(1, 3));
  std::filesystem::remove(in("first_1.fld"));  // whatever is served now was cached
  EXPECT_EQ(before, host.ask({.variable = 1, .part = 1}, 3).values);
}

void write_changed(const std::filesystem::path& path, const std::function<void(testkit::File&)>& change) {
  testkit::File file = file_of(numbered_mesh(100));
  change(file);
  testkit::write_file(file, path);
}

INSTANTIATE_TEST_SUITE_P(
    Reasons, FailingOpening,
    testing::Values(
        Failure{"MissingFile", [](const auto&) {}},
        Failure{"OtherIdentification",
                [](const auto& path) { write_changed(path, [](auto& file) { file.magic = "VTRL-FLX"; }); }},
        Failure{"OtherVersion",
                [](const auto& path) { write_changed(path, [](auto& file) { file.version = 5; }); }},
        Failure{
            "TwoDimensions",
            [](const auto& path) { write_changed(path, [](auto& file) { file.header.set_dimension(2); }); }},
        Failure{"NoGeometry",
                [](const auto& path) {
                  write_changed(path, [](auto& file) { file.region_sets[0].remove("LS_Nodes"); });
                }},
        Failure{"GeometryThatCannotBeRead",
                [](const auto& path) {
                  write_changed(path, [](auto& file) {
                    file.region_sets[0].section("LS_Elements").blocks[0] = Block::integer(-1);
                  });
                }},
        Failure{"SecondRegionSetThatCannotBeRead",
                [](const auto& path) {
                  write_changed(path, [](auto& file) {
                    file.add_region_set().add(testkit::mesh_sections(numbered_mesh(7)));
                    file.region_sets[1].section("LS_Nodes").blocks[0] = Block::integer(-1);
                  });
                }},
        Failure{"MeshWithoutElements",
                [](const auto& path) {
                  write_changed(path, [](auto& file) { file.region_sets[0].remove("LS_Elements"); });
                }},
        Failure{"SmallerMeshWithoutElements",
                [](const auto& path) { testkit::write_file(file_of(numbered_nodes(2)), path); }},
        Failure{"FileThatBreaksOff",
                [](const auto& path) {
                  const std::string bytes = testkit::to_bytes(file_of(numbered_mesh(100)));
                  testkit::write_bytes(path, bytes.substr(0, bytes.size() / 2));
                },
                true}),
    [](const testing::TestParamInfo<Failure>& info) { return info.param.name; });

}  // namespace
}  // namespace reader_test
