// Selecting a step: which geometry is read and served.
#include <limits>
#include <optional>
#include <string>

#include "tests/reader/loaded_reader.h"
#include "tests/reader/small_datasets.h"

namespace reader_test {
namespace {

// A mesh of four nodes, node 0 at x = `mark`.
testkit::Mesh marked_mesh(double mark) {
  testkit::Mesh mesh = numbered_mesh(4);
  mesh.nodes.x.values()[0] = mark;
  return mesh;
}

class TimeSteps : public LoadedReader {
 protected:
  std::filesystem::path step_path(int cycle) const { return in("case_" + std::to_string(cycle) + ".fld"); }
  void write_step(int cycle, const testkit::File& file) { write(file, step_path(cycle).filename().string()); }
  // A file with geometry in every region set that has a mark.
  void write_marks(int cycle, const std::vector<std::optional<double>>& marks) {
    testkit::File file = file_at(cycle);
    for (const auto& mark : marks) {
      auto& set = file.add_region_set();
      if (mark) set.add(testkit::mesh_sections(marked_mesh(*mark)));
      set.add(numbered_scalar("T", 4, cycle));
    }
    write_step(cycle, file);
  }
  void open_series() { open(step_path(1)); }

  std::string trace_of(int cycle) const { return trace(step_path(cycle)); }

  // The current mark of region set `g` of two.
  float mark(int part) { return host.coordinates(part)[0][0]; }
};
using TimeStepsDeathTest = TimeSteps;

TEST_F(TimeSteps, GeometryOfTheFirstFileIsThereAfterOpening) {
  write_marks(1, {100.0});
  write_marks(2, {200.0});
  open_series();
  EXPECT_EQ(100.0F, mark(1));
  EXPECT_EQ("", select(kGeometry, 0)) << "it is not read again";
  EXPECT_EQ(100.0F, mark(1));
}

TEST_F(TimeSteps, SelectingAStepReadsItsGeometryOnce) {
  write_marks(1, {100.0});
  write_marks(2, {200.0});
  open_series();
  EXPECT_EQ(trace_of(2), select(kGeometry, 1));
  EXPECT_EQ(200.0F, mark(1));
  EXPECT_EQ("", select(kGeometry, 1));
  EXPECT_EQ(trace_of(1), select(kGeometry, 0));
  EXPECT_EQ(100.0F, mark(1));
}

TEST_F(TimeSteps, StepsOfTheGeometryCountOnlyFilesThatHaveIt) {
  write_marks(1, {100.0});
  write_marks(2, {std::nullopt});
  write_marks(3, {300.0});
  write_marks(4, {std::nullopt});
  open_series();
  EXPECT_EQ(trace_of(3), select(kGeometry, 1));
  EXPECT_EQ(300.0F, mark(1));
  EXPECT_EQ("error : not found geometry data in current time.\n", select(kGeometry, 2));
  EXPECT_EQ(300.0F, mark(1));
}

TEST_F(TimeSteps, RegionSetThatAlreadyHoldsTheRightFileIsNotReadAgain) {
  write_marks(1, {100.0, 101.0});
  write_marks(2, {200.0, 201.0});
  write_marks(3, {std::nullopt, 301.0});
  open_series();
  select(kGeometry, 1);
  EXPECT_EQ(trace_of(3), select(kGeometry, 2)) << "one region set, not two";
  EXPECT_EQ(200.0F, mark(1));
  EXPECT_EQ(301.0F, mark(2));
}

TEST_F(TimeSteps, RegionSetWithoutGeometryTakesTheNearestEarlierFileThatHasIt) {
  write_marks(1, {100.0, 101.0});
  write_marks(2, {200.0, 201.0});
  write_marks(3, {std::nullopt, 301.0});
  write_marks(4, {std::nullopt, 401.0});
  open_series();
  EXPECT_EQ(trace_of(2) + trace_of(4), select(kGeometry, 3));
  EXPECT_EQ(200.0F, mark(1));
  EXPECT_EQ(401.0F, mark(2));
}

TEST_F(TimeSteps, StepThatNamesNoFileKeepsTheGeometryAndSaysSo) {
  write_marks(1, {100.0});
  write_marks(2, {200.0});
  open_series();
  select(kGeometry, 1);
  for (const int step : {2, -1, 1000000, std::numeric_limits<int>::max(), std::numeric_limits<int>::min()}) {
    EXPECT_EQ("error : not found geometry data in current time.\n", select(kGeometry, step)) << step;
    EXPECT_EQ(200.0F, mark(1));
    EXPECT_EQ((Rows{{1, 2, 3, 4}}), host.rows(1, 14));
    EXPECT_EQ((Answer{2, {kUntouchedFloat, kUntouchedFloat}}), host.ask({.variable = 1, .part = 1}, 2))
        << "the step is selected all the same";
  }
}

TEST_F(TimeSteps, SelectingAStepOfTheVariablesReadsNoGeometry) {
  write_marks(1, {100.0});
  write_marks(2, {200.0});
  open_series();
  EXPECT_EQ("", select(kVariables, 1));
  EXPECT_EQ(100.0F, mark(1));
  EXPECT_EQ("", select(kVariables, -5));
  EXPECT_EQ("", select(kVariables, 17));
  EXPECT_EQ(100.0F, mark(1));
}

TEST_F(TimeSteps, SelectingAStepOfAnotherSetReadsNothing) {
  write_marks(1, {100.0});
  write_marks(2, {200.0});
  open_series();
  for (const int set : {0, 3, -1, 300, 1000000}) EXPECT_EQ("", select(set, 1)) << set;
  EXPECT_EQ(100.0F, mark(1));
}

TEST_F(TimeSteps, ValuesComeFromTheFileOfTheSelectedStep) {
  write_marks(1, {100.0});
  write_marks(2, {std::nullopt});
  write_marks(3, {300.0});
  open_series();
  for (const int step : {2, 0, 1}) {
    select(kVariables, step);
    EXPECT_EQ(static_cast<float>(step + 1), host.scalar(1, 1)[0]);
  }
}

// Steps of the geometry's set skip files without geometry; steps for values do not.
TEST_F(TimeSteps, ValuesAfterAStepOfTheGeometryComeFromTheFileAtThatPlaceOfTheSeries) {
  write_marks(1, {100.0});
  write_marks(2, {std::nullopt});
  write_marks(3, {300.0});
  open_series();
  select(kGeometry, 1);
  EXPECT_EQ(300.0F, mark(1));
  EXPECT_EQ(2.0F, host.scalar(1, 1)[0]);
}

// A file with only nodes: the elements and regions of the file before are kept, and the index base is not
// subtracted again.
TEST_F(TimeSteps, FileWithNodesAloneKeepsElementsAndRegions) {
  testkit::Mesh mesh = marked_mesh(100.0);
  add_triangle_surface(mesh, "wall", {3, 1, 2});
  add_volume(mesh, "fluid", {0});
  testkit::File first = file_at(1, {mesh});
  first.header.set_bias(1);
  write_step(1, first);
  testkit::File second = file_at(2);
  second.header.set_bias(1);
  second.add_region_set().add(testkit::nodes_section(marked_mesh(200.0).nodes));
  write_step(2, second);
  open_series();
  const auto parts = host.parts();
  for (int round = 0; round < 3; ++round) {
    EXPECT_EQ(trace_of(2), select(kGeometry, 1));
    EXPECT_EQ(200.0F, mark(3));
    EXPECT_EQ(parts, host.parts());
    EXPECT_EQ((Rows{{3, 1, 2}}), host.rows(1, 6));
    EXPECT_EQ((Rows{{1, 2, 3, 4}}), host.rows(2, 14));
    EXPECT_EQ((Rows{{1, 2, 3, 4}}), host.rows(3, 14));
    select(kGeometry, 0);
    EXPECT_EQ(100.0F, mark(3));
    EXPECT_EQ((Rows{{3, 1, 2}}), host.rows(1, 6));
  }
}

TEST_F(TimeSteps, NegativeMaterialNumbersThatAreKeptAreNotShiftedAgain) {
  testkit::Mesh mesh = marked_mesh(100.0);
  add_element(mesh, testkit::kTetrahedron, 0);
  mesh.materials = {-2, 7};
  write_step(1, file_at(1, {mesh}));
  testkit::File second = file_at(2);
  second.add_region_set().add(testkit::nodes_section(mesh.nodes));
  write_step(2, second);
  open_series();
  select(kGeometry, 1);
  EXPECT_EQ((Floats{1, 10}), host.materials(1, 14));
}

TEST_F(TimeSteps, ReloadedRegionsReplaceTheOnesBefore) {
  testkit::Mesh mesh = marked_mesh(100.0);
  for (const char* name : {"a", "b", "c"}) add_triangle_surface(mesh, name, {0, 1, 2});
  write_step(1, file_at(1, {mesh}));
  mesh.surfaces.resize(1);
  mesh.surfaces[0].name = "only";
  write_step(2, file_at(2, {mesh}));
  open_series();
  EXPECT_EQ((std::vector<std::string>{"a", "b", "c", "ALL_ELEMENTS"}), host.part_names());
  select(kGeometry, 1);
  EXPECT_EQ((std::vector<std::string>{"only", "ALL_ELEMENTS"}), host.part_names());
  select(kGeometry, 0);
  EXPECT_EQ((std::vector<std::string>{"a", "b", "c", "ALL_ELEMENTS"}), host.part_names());
}

TEST_F(TimeSteps, CoordinateSystemIsThatOfTheFileRead) {
  testkit::Mesh mesh = marked_mesh(2.0);
  mesh.nodes.y.values()[0] = 0.5;
  add_volume(mesh, "fluid", {0});
  mesh.coordinate_system = 1;
  write_step(1, file_at(1, {mesh}));
  mesh.coordinate_system.reset();
  write_step(2, file_at(2, {mesh}));
  open_series();
  EXPECT_NEAR(2.0 * 0.8775825618903728, host.coordinates(1)[0][0], 1e-6);
  select(kGeometry, 1);
  EXPECT_EQ(2.0F, host.coordinates(1)[0][0]);
}

std::string missing_reference() {
  return "fld_reader:[0-9]+: void USERD_set_time_set_and_step\\(int, int\\): Assertion `ref_fldfile' failed";
}

TEST_F(TimeStepsDeathTest, StepWithFewerRegionSetsThanTheFirstFileEndsTheProcess) {
  write_marks(1, {100.0, 101.0});
  write_marks(2, {200.0});
  open_series();
  EXPECT_DEATH(api().set_time_set_and_step(kGeometry, 1), missing_reference());
}

TEST_F(TimeStepsDeathTest, MotionWhoseBaseCycleNamesNoFileEndsTheProcess) {
  write_marks(1, {100.0});
  testkit::File moved = file_at(2);
  moved.add_region_set().add(motion_of(99, {}));
  write_step(2, moved);
  open_series();
  EXPECT_DEATH(api().set_time_set_and_step(kGeometry, 1), missing_reference());
}

TEST_F(TimeStepsDeathTest, EarlierFileWithFewerRegionSetsEndsTheProcess) {
  write_marks(1, {100.0, 101.0});
  write_marks(2, {200.0});
  write_marks(3, {300.0, std::nullopt});
  open_series();
  EXPECT_DEATH(api().set_time_set_and_step(kGeometry, 2),
               "fld:[0-9]+: const FLDFile \\*FLD::refGeometryFLDFile\\(int, int\\) const: Assertion "
               "`static_cast< size_t >\\( ioverlap \\) < m_fld\\[i\\].m_overlap.size\\(\\)' failed");
}

}  // namespace
}  // namespace reader_test
