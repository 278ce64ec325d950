// Datasets as VTKHDF files: what is read back is what the reader plug-in gives.
#include "vtkhdf/series.h"

#include "gtest/gtest.h"
#include <algorithm>
#include <chrono>
#include <cmath>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <limits>
#include <numeric>
#include <optional>
#include <span>
#include <string>
#include <thread>
#include <vector>

#include "host/display_names.h"
#include "host/undefined_value.h"
#include "samples/samples.h"
#include "samples/tank.h"
#include "testkit/file_writer.h"
#include "testkit/quantity.h"
#include "testkit/small_meshes.h"
#include "testkit/temporary_directory.h"
#include "tests/host/open_file.h"
#include "tests/vtkhdf/hdf_collection.h"

namespace {

namespace fs = std::filesystem;
using vtkhdf_test::Collection;
using vtkhdf_test::Grid;
using Names = std::vector<std::string>;

std::vector<int> all_variables(host::Session& session) {
  std::vector<int> numbers(session.variables().size());
  std::iota(numbers.begin(), numbers.end(), 1);
  return numbers;
}

std::vector<int> all_parts(const host::Session& session) {
  std::vector<int> numbers(session.parts().size());
  std::iota(numbers.begin(), numbers.end(), 1);
  return numbers;
}

void write_all(host::Session& session, const fs::path& path, vtkhdf::SeriesOptions options = {}) {
  options.variables = all_variables(session);
  options.steps = static_cast<std::size_t>(session.step_count());
  vtkhdf::Series series(path, session, options);
  for (int step = 0; step < session.step_count(); ++step) {
    session.select_step(step);
    series.write_step(session, all_parts(session));
  }
}

// NaN where it is undefined; the components of a vector one behind the other.
std::vector<float> expected_values(host::Session& session, const host::Variable& variable, int part) {
  std::vector<float> tuples;
  const auto width = static_cast<std::size_t>(variable.components());
  for (std::size_t component = 0; component < width; ++component) {
    const host::PartValues values = session.values(variable.number, part, static_cast<int>(component));
    tuples.resize(values.values().size() * width);
    for (std::size_t i = 0; i < values.values().size(); ++i) {
      const float value = values.values()[i];
      tuples[i * width + component] =
          host::is_undefined(value) ? std::numeric_limits<float>::quiet_NaN() : value;
    }
  }
  return tuples;
}

void expect_same(const std::vector<float>& found, const std::vector<float>& wanted,
                 const std::string& where) {
  ASSERT_EQ(found.size(), wanted.size()) << where;
  for (std::size_t i = 0; i < found.size(); ++i) {
    if (std::isnan(found[i]) && std::isnan(wanted[i])) continue;
    ASSERT_EQ(found[i], wanted[i]) << where << " at " << i;
  }
}

void expect_grid(const Grid& grid, host::Session& session, int part, const std::string& where) {
  const host::Coordinates coordinates = session.coordinates(part);
  std::vector<float> points;
  for (std::size_t i = 0; i < coordinates.size(); ++i)
    points.insert(points.end(), {coordinates.x()[i], coordinates.y()[i], coordinates.z()[i]});
  expect_same(grid.points, points, where);
  std::vector<std::int64_t> offsets = {0};
  std::vector<std::int64_t> corners;
  std::vector<std::uint8_t> types;
  for (const host::ElementBlock& block : session.elements(part)) {
    for (std::size_t e = 0; e < block.size(); ++e) {
      std::vector<int> nodes(block.element(e).begin(), block.element(e).end());
      if (block.shape.name == "prism") nodes = {nodes[0], nodes[2], nodes[1], nodes[3], nodes[5], nodes[4]};
      for (const int node : nodes) corners.push_back(node - 1);
      offsets.push_back(static_cast<std::int64_t>(corners.size()));
      // VTK's numbers of the shapes.
      const std::string_view name = block.shape.name;
      types.push_back(name == "tri"       ? 5
                      : name == "quad"    ? 9
                      : name == "tet"     ? 10
                      : name == "pyramid" ? 14
                      : name == "prism"   ? 13
                                          : 12);
    }
  }
  EXPECT_EQ(grid.offsets, offsets) << where;
  EXPECT_EQ(grid.connectivity, corners) << where;
  EXPECT_EQ(grid.types, types) << where;
}

class Samples : public testing::TestWithParam<std::size_t> {
 protected:
  Samples() { reader.session().open(samples::write_samples(directory.path())[GetParam()].file); }

  testkit::TemporaryDirectory directory;
  host_test::Reader reader;
};

TEST_P(Samples, HaveAllPartsAndValuesAtAllSteps) {
  host::Session& session = reader.session();
  write_all(session, directory / "out.vtkhdf");
  const Collection file(directory / "out.vtkhdf");
  const Names names = host::part_names(session);
  for (int step = 0; step < session.step_count(); ++step) {
    session.select_step(step);
    for (const host::Part& part : session.parts()) {
      const std::string& block = names[static_cast<std::size_t>(part.number) - 1];
      const std::string where = block + " at step " + std::to_string(step);
      ASSERT_EQ(file.steps(block), session.step_count());
      EXPECT_EQ(static_cast<float>(file.time(block, step)),
                session.variable_times().times[static_cast<std::size_t>(step)]);
      expect_grid(file.grid(block, step), session, part.number, where);
      for (const host::Variable& variable : session.variables()) {
        const bool is_nodal = variable.location == host::Location::node;
        expect_same(file.values(block, is_nodal ? "PointData" : "CellData", variable.name, step),
                    expected_values(session, variable, part.number), where + " " + variable.name);
      }
    }
  }
}

INSTANTIATE_TEST_SUITE_P(All, Samples, testing::Range(std::size_t{0}, samples::kSamples));

class Tank : public Samples {};
INSTANTIATE_TEST_SUITE_P(One, Tank, testing::Values(1));

TEST_P(Tank, HasAMeshAtRestOnce) {
  write_all(reader.session(), directory / "tank.vtkhdf");
  const Collection file(directory / "tank.vtkhdf");
  EXPECT_EQ(file.rows("tank_wall", "Points"), 1176U);
  EXPECT_EQ(file.rows("tank_wall", "Connectivity"), 1040U * 4);
  EXPECT_EQ(file.rows("tank_wall", "NumberOfPoints"), 1U);
  // What turns has points of its own at every step, and one connectivity.
  EXPECT_EQ(file.rows("blade_1", "Points"), 8U * 60);
  EXPECT_EQ(file.rows("blade_1", "Connectivity"), 53U * 4);
  EXPECT_EQ(file.rows("blade_1", "Types"), 53U);
}

TEST_P(Tank, HasTheTimesThatTheSolverMeant) {
  write_all(reader.session(), directory / "tank.vtkhdf");
  const Collection file(directory / "tank.vtkhdf");
  EXPECT_EQ(file.time("blade_1", 1), 0.025);
  EXPECT_EQ(file.time("blade_1", 7), 0.175);
}

TEST_P(Tank, HasTheHierarchy) {
  write_all(reader.session(), directory / "tank.vtkhdf");
  const Collection file(directory / "tank.vtkhdf");
  EXPECT_EQ(file.nodes(""), (Names{"Surfaces", "Volumes", "Wholemesh"}));
  EXPECT_EQ(file.nodes("Volumes"), (Names{"impeller_zone", "tank_zone"}));
  EXPECT_EQ(file.nodes("Surfaces/Grouping_Regions"), (Names{"VFG_impeller"}));
  EXPECT_EQ(file.block_of("Surfaces/Grouping_Regions/VFG_impeller"), "/VTKHDF/&VFG_impeller");
}

TEST_P(Tank, IsCompleteAfterEveryStep) {
  host::Session& session = reader.session();
  vtkhdf::Series series(directory / "tank.vtkhdf", session,
                        {.variables = all_variables(session), .steps = 8});
  EXPECT_FALSE(fs::exists(directory / "tank.vtkhdf"));
  for (int step = 0; step < 3; ++step) {
    session.select_step(step);
    series.write_step(session, all_parts(session));
    // What a killed program would leave: nothing that is still in memory.
    const fs::path left = directory / "left.vtkhdf";
    fs::copy_file(directory / "tank.vtkhdf", left, fs::copy_options::overwrite_existing);
    const Collection file(left);
    EXPECT_EQ(file.steps("blade_1"), step + 1);
    expect_grid(file.grid("blade_1", step), session, 3, "step " + std::to_string(step));
    expect_same(file.values("blade_1", "PointData", "Pressure", step),
                expected_values(session, session.variable(1), 3), "Pressure");
  }
}

// A program that is killed within a step leaves the steps before.
TEST_P(Tank, KeepsTheStepsBeforeAnInterruption) {
  host::Session& session = reader.session();
  vtkhdf::Series series(directory / "tank.vtkhdf", session,
                        {.variables = all_variables(session), .steps = 8});
  series.write_step(session, all_parts(session));
  session.select_step(1);
  int parts = 0;
  const auto look = [&] {
    if (++parts != 12) return;
    fs::copy_file(directory / "tank.vtkhdf", directory / "left.vtkhdf");
    throw std::runtime_error("interrupted");
  };
  EXPECT_THROW(series.write_step(session, all_parts(session), look), std::runtime_error);
  session.select_step(0);
  const Collection file(directory / "left.vtkhdf");
  for (const char* block : {"blade_1", "tank_zone"}) EXPECT_EQ(file.steps(block), 1) << block;
  expect_grid(file.grid("blade_1", 0), session, 3, "step 0");
}

TEST_P(Tank, TakesCompressionAndDoublePrecision) {
  write_all(reader.session(), directory / "small.vtkhdf", {.variables = {}, .compress = true});
  write_all(reader.session(), directory / "wide.vtkhdf", {.variables = {}, .double_precision = true});
  const Collection small(directory / "small.vtkhdf");
  const Collection wide(directory / "wide.vtkhdf");
  EXPECT_TRUE(wide.is_double("tank_wall", "Points"));
  EXPECT_TRUE(wide.is_double("tank_wall", "PointData/Velocity"));
  EXPECT_FALSE(small.is_double("tank_wall", "Points"));
  EXPECT_LT(small.stored_bytes("tank_zone", "Connectivity"), 11936U * 8 * 8 / 4);
  for (int step : {0, 7}) {
    reader.session().select_step(step);
    for (const Collection* file : {&small, &wide}) {
      expect_grid(file->grid("tank_zone", step), reader.session(), reader.part("tank_zone"), "tank_zone");
      expect_same(file->values("blade_1", "PointData", "Velocity", step),
                  expected_values(reader.session(), reader.session().variable(3), 3), "Velocity");
    }
  }
}

TEST_P(Tank, TakesLittleMoreThanItsArrays) {
  write_all(reader.session(), directory / "tank.vtkhdf");
  const Collection file(directory / "tank.vtkhdf");
  std::size_t bytes = 0;
  for (const std::string& block : host::part_names(reader.session())) {
    for (const char* array : {"Points", "Connectivity", "Offsets", "Types", "PointData/Pressure",
                              "PointData/Temperature", "PointData/Velocity", "CellData/MatOfElements"})
      bytes += file.stored_bytes(block, array);
  }
  EXPECT_LT(static_cast<double>(fs::file_size(directory / "tank.vtkhdf")), 1.02 * static_cast<double>(bytes));
}

TEST(LongSeries, HasAMeshAtRestOnce) {
  testkit::TemporaryDirectory directory;
  constexpr int kSteps = 100;
  host_test::Reader reader;
  reader.session().open(samples::tank::write_steps(directory.path(), kSteps).file);
  {
    vtkhdf::Series series(directory / "tank.vtkhdf", reader.session(), {.variables = {1}, .steps = kSteps});
    for (int step = 0; step < kSteps; ++step) {
      reader.session().select_step(step);
      series.write_step(reader.session(), {reader.part("tank_wall"), reader.part("blade_1")});
    }
  }
  const Collection file(directory / "tank.vtkhdf");
  EXPECT_EQ(file.steps("tank_wall"), kSteps);
  EXPECT_EQ(file.rows("tank_wall", "PointData/Pressure"), kSteps * 1176U);
  EXPECT_EQ(file.rows("tank_wall", "Points"), 1176U);
  EXPECT_EQ(file.rows("tank_wall", "Types"), 1040U);
  EXPECT_EQ(file.rows("tank_wall", "Offsets"), 1041U);
  EXPECT_EQ(file.rows("tank_wall", "Connectivity"), 1040U * 4);
  EXPECT_EQ(file.rows("tank_wall", "NumberOfPoints"), 1U);
  // What turns has its points at every step, and its elements once.
  EXPECT_EQ(file.rows("blade_1", "Points"), kSteps * 60U);
  EXPECT_EQ(file.rows("blade_1", "Connectivity"), 53U * 4);
  for (const int step : {0, 57, 99}) {
    reader.session().select_step(step);
    for (const char* part : {"tank_wall", "blade_1"}) {
      expect_grid(file.grid(part, step), reader.session(), reader.part(part), part);
      expect_same(file.values(part, "PointData", "Pressure", step),
                  expected_values(reader.session(), reader.session().variable(1), reader.part(part)), part);
    }
  }
}

// A series whose mesh, parts and variables change: step 0 has one tetrahedron, step 1 four elements, step 2
// the tetrahedron again.
class ChangingMesh : public testing::Test {
 protected:
  ChangingMesh() {
    for (int step = 0; step < 3; ++step) {
      const testkit::Mesh mesh = step == 1 ? testkit::one_of_each() : testkit::one_tetrahedron();
      testkit::File file = testkit::file_of(mesh);
      file.header.set_cycle(step, 0.5 * step);
      const std::vector<double> values(step == 1 ? 11 : 4, step + 0.25);
      file.region_sets.front().add(
          testkit::scalar_section({.name = step == 2 ? "q" : "p", .label = "", .values = values}));
      testkit::write_file(file, directory / ("c_" + std::to_string(step) + ".fld"));
    }
    reader.session().open(directory / "c_0.fld");
    write_all(reader.session(), directory / "out.vtkhdf");
  }

  testkit::TemporaryDirectory directory;
  host_test::Reader reader;
};

TEST_F(ChangingMesh, HasTheMeshOfEachStep) {
  host::Session& session = reader.session();
  const Collection file(directory / "out.vtkhdf");
  for (int step = 0; step < 3; ++step) {
    session.select_step(step);
    for (const host::Part& part : session.parts())
      expect_grid(file.grid(part.name, step), session, part.number, part.name);
  }
  EXPECT_EQ(file.nodes("Volumes"), (Names{"fluid", "lower", "upper"}));
}

TEST_F(ChangingMesh, HasNothingOfAPartWhereItIsMissing) {
  const Collection file(directory / "out.vtkhdf");
  for (const char* block : {"lower", "upper", "outside"}) {
    for (int step : {0, 2}) EXPECT_TRUE(file.grid(block, step).points.empty()) << block << " " << step;
  }
  EXPECT_TRUE(file.grid("fluid", 1).types.empty());
  EXPECT_EQ(file.time("lower", 2), 1.0);
}

TEST_F(ChangingMesh, HasNanWhereAStepLacksAVariable) {
  const Collection file(directory / "out.vtkhdf");
  const std::vector<float> nothing(4, std::numeric_limits<float>::quiet_NaN());
  EXPECT_EQ(file.values("fluid", "PointData", "p", 0), std::vector<float>(4, 0.25F));
  EXPECT_EQ(file.values("ALL_ELEMENTS", "PointData", "p", 1), std::vector<float>(11, 1.25F));
  expect_same(file.values("fluid", "PointData", "p", 2), nothing, "p");
  expect_same(file.values("fluid", "PointData", "q", 0), nothing, "q");
  EXPECT_EQ(file.values("fluid", "PointData", "q", 2), std::vector<float>(4, 2.25F));
}

std::string bytes_of(const fs::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

TEST(Series, IsTheSameFileAtAnotherTime) {
  testkit::TemporaryDirectory directory;
  host_test::OpenFile file(testkit::file_of(testkit::one_of_each()));
  write_all(file.session(), directory / "first.vtkhdf");
  // HDF5 would note seconds.
  for (const std::time_t start = std::time(nullptr); std::time(nullptr) == start;)
    std::this_thread::sleep_for(std::chrono::milliseconds(10));
  write_all(file.session(), directory / "second.vtkhdf");
  EXPECT_EQ(bytes_of(directory / "first.vtkhdf"), bytes_of(directory / "second.vtkhdf"));
}

TEST(Series, ThatCannotBeWrittenIsAnError) {
  host_test::OpenFile file(testkit::file_of(testkit::one_tetrahedron()));
  EXPECT_THROW(vtkhdf::Series("/no such folder/x.vtkhdf", file.session(), {}), vtkhdf::WriteError);
}

TEST(Series, WithoutAStepLeavesNoFile) {
  testkit::TemporaryDirectory directory;
  host_test::OpenFile file(testkit::file_of(testkit::one_tetrahedron()));
  { const vtkhdf::Series series(directory / "x.vtkhdf", file.session(), {}); }
  EXPECT_TRUE(fs::is_empty(directory.path()));
}

TEST(Series, OfOddNamesKeepsThemApart) {
  testkit::TemporaryDirectory directory;
  testkit::Mesh mesh = testkit::one_tetrahedron();
  const testkit::Surface wall = mesh.surfaces.front();
  mesh.surfaces.clear();
  for (const char* name : {"a/b", "a_b", "Assembly", ".", "\x8a\x4f", "1st"}) {
    mesh.surfaces.push_back(wall);
    mesh.surfaces.back().name = name;
  }
  host_test::OpenFile dataset(testkit::file_of(mesh));
  write_all(dataset.session(), directory / "x.vtkhdf");
  const Collection file(directory / "x.vtkhdf");
  EXPECT_EQ(file.nodes("Surfaces"), (Names{"a_b", "a_b_", "Assembly_", "_", "__", "_1st"}));
  for (const char* block : {"a_b", "a_b_", "Assembly_", "_", "外", "1st"})
    expect_grid(file.grid(block, 0), dataset.session(), 1, block);
}

TEST(Series, OfVariablesWithOddNamesKeepsThemApart) {
  testkit::TemporaryDirectory directory;
  testkit::File description = testkit::file_of(testkit::one_tetrahedron());
  for (const char* name : {"a/b", "a_b"}) {
    const double value = name[1] == '/' ? 1.5 : 2.5;
    description.region_sets.front().add(
        testkit::scalar_section({.name = name, .label = "", .values = std::vector<double>(4, value)}));
  }
  host_test::OpenFile dataset(description);
  write_all(dataset.session(), directory / "x.vtkhdf");
  const Collection file(directory / "x.vtkhdf");
  EXPECT_EQ(file.values("fluid", "PointData", "a_b", 0), std::vector<float>(4, 1.5F));
  EXPECT_EQ(file.values("fluid", "PointData", "a_b_", 0), std::vector<float>(4, 2.5F));
}

TEST_F(ChangingMesh, TakesValuesThatAreNotItsOwn) {
  std::vector<float> given;
  const auto values = [&](int part) -> std::optional<std::span<const float>> {
    if (reader.session().step() == 0) return std::nullopt;
    const int nodes = reader.session().parts()[static_cast<std::size_t>(part) - 1].nodes;
    given.assign(static_cast<std::size_t>(nodes) * 2, 7.5F);
    return given;
  };
  write_all(reader.session(), directory / "more.vtkhdf", {.variables = {}, .more = {{"p", 2, values}}});
  const Collection file(directory / "more.vtkhdf");
  EXPECT_EQ(file.values("fluid", "PointData", "p", 0), std::vector<float>(4, 0.25F));
  expect_same(file.values("fluid", "PointData", "p_", 0),
              std::vector<float>(8, std::numeric_limits<float>::quiet_NaN()), "without values");
  EXPECT_EQ(file.values("fluid", "PointData", "p_", 2), std::vector<float>(8, 7.5F));
  EXPECT_EQ(file.values("ALL_ELEMENTS", "PointData", "p_", 1), std::vector<float>(22, 7.5F));
}

}  // namespace
