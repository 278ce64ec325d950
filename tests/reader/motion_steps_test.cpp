// Moving regions over the steps of a series. The expected positions follow from the motion.
#include <cmath>
#include <numbers>
#include <string>

#include "tests/reader/loaded_reader.h"
#include "tests/reader/small_datasets.h"

namespace reader_test {
namespace {

using testkit::Action;

constexpr double kPi = std::numbers::pi;

class MotionSteps : public LoadedReader {
 protected:
  std::filesystem::path path(int cycle) const { return in("case_" + std::to_string(cycle) + ".fld"); }
  void write_step(int cycle, const testkit::File& file) { testkit::write_file(file, path(cycle)); }
  std::string trace_of(int cycle) const { return trace(path(cycle)); }

  // Nodes 0 to 3 in "rotor", 4 to 7 in "stator"; a surface on either side; in the first file.
  static testkit::Mesh rotor_and_stator() {
    testkit::Mesh mesh = testkit::one_tetrahedron();
    for (int i = 0; i < 4; ++i) mesh.nodes.add(10.0 + i, 20.0 + i, 30.0 + i);
    add_element(mesh, testkit::kTetrahedron, 4);
    mesh.materials = {1, 1};
    mesh.surfaces.clear();
    mesh.volumes.clear();
    add_triangle_surface(mesh, "shaft", {0, 1, 2});
    add_volume(mesh, "rotor", {0});
    add_volume(mesh, "stator", {1});
    return mesh;
  }
  static constexpr int kShaft = 1;
  static constexpr int kRotor = 2;
  static constexpr int kStator = 3;
  static constexpr int kWholeMesh = 4;

  // A file with only a motion of "rotor" in its only region set.
  static testkit::File moved(int cycle, int base_cycle, const std::vector<Action>& actions) {
    testkit::File file = file_at(cycle);
    file.add_region_set().add(motion_of(base_cycle, {{.names = {"rotor"}, .actions = actions}}));
    return file;
  }
  static testkit::File turned(int cycle, double angle) {
    return moved(cycle, 0, {Action::rotate({0.0, 0.0, 0.0}, {0.0, 0.0, 1.0}, angle)});
  }
};

void expect_near(const Points& expected, const Points& actual) {
  ASSERT_EQ(expected.size(), actual.size());
  for (std::size_t i = 0; i < expected.size(); ++i) {
    for (std::size_t axis = 0; axis < 3; ++axis) {
      EXPECT_NEAR(expected[i][axis], actual[i][axis], 1e-6) << "node " << i << ", axis " << axis;
    }
  }
}

// The rotor's nodes (0,0,0), (1,0,0), (0,1,0), (0,0,1) after a turn about z.
Points turned_rotor(double angle) {
  const auto c = static_cast<float>(std::cos(angle));
  const auto s = static_cast<float>(std::sin(angle));
  return {{0, 0, 0}, {c, s, 0}, {-s, c, 0}, {0, 0, 1}};
}

const Points kStatorNodes = {{10, 20, 30}, {11, 21, 31}, {12, 22, 32}, {13, 23, 33}};

// Seven steps, each an eighth of a turn further, in any order: motions of different steps are not combined.
TEST_F(MotionSteps, EveryStepStartsFromTheUnmovedGeometry) {
  write_step(0, file_at(0, {rotor_and_stator()}));
  for (int step = 1; step < 8; ++step) write_step(step, turned(step, step * kPi / 4));
  open(path(0));
  EXPECT_EQ(8, api().get_num_of_time_steps(1));
  for (const int step : {1, 2, 3, 4, 5, 6, 7, 7, 3, 1, 5, 0, 6, 0, 2}) {
    select(1, step);
    expect_near(turned_rotor(step * kPi / 4), host.coordinates(kRotor));
    EXPECT_EQ(kStatorNodes, host.coordinates(kStator));
  }
}

TEST_F(MotionSteps, SurfacesAndTheWholeMeshMoveWithTheVolume) {
  write_step(0, file_at(0, {rotor_and_stator()}));
  write_step(1, turned(1, kPi / 2));
  open(path(0));
  select(1, 1);
  expect_near({{0, 0, 0}, {0, 1, 0}, {-1, 0, 0}}, host.coordinates(kShaft));
  Points all = turned_rotor(kPi / 2);
  all.insert(all.end(), kStatorNodes.begin(), kStatorNodes.end());
  expect_near(all, host.coordinates(kWholeMesh));
  EXPECT_EQ((Rows{{1, 2, 3, 4}, {5, 6, 7, 8}}), host.rows(kWholeMesh, 14));
}

TEST_F(MotionSteps, BaseFileIsReadForEverySelection) {
  write_step(0, file_at(0, {rotor_and_stator()}));
  write_step(1, turned(1, 1.0));
  open(path(0));
  EXPECT_EQ(trace_of(0), select(1, 1));
  EXPECT_EQ(trace_of(0), select(1, 1)) << "also when it is selected again";
  EXPECT_EQ(trace_of(0), select(1, 0)) << "and the file itself, when any file has a motion";
  EXPECT_EQ(trace_of(0), select(1, 0));
}

TEST_F(MotionSteps, BaseMayBeAnyFileOfTheSeries) {
  testkit::Mesh mesh = rotor_and_stator();
  write_step(0, file_at(0, {mesh}));
  write_step(1, moved(1, 2, {Action::translate({0.0, 0.0, 5.0})}));
  mesh.nodes.x.values()[0] = 0.5;
  write_step(2, file_at(2, {mesh}));
  open(path(0));
  EXPECT_EQ(trace_of(2), select(1, 1));
  EXPECT_EQ((Points{{0.5, 0, 5}, {1, 0, 5}, {0, 1, 5}, {0, 0, 6}}), host.coordinates(kRotor));
}

// The base cycle refers to the headers, not to the file names.
TEST_F(MotionSteps, BaseIsTheFirstFileWhoseHeaderHasThatCycle) {
  testkit::Mesh mesh = rotor_and_stator();
  for (const int name : {0, 1, 2}) {
    mesh.nodes.x.values()[0] = 10.0 * name;
    write_step(name, file_at(name == 0 ? 7 : 500, {mesh}));
  }
  write_step(3, moved(3, 500, {}));
  open(path(0));
  EXPECT_EQ(trace_of(1), select(1, 3));
  EXPECT_EQ(10.0F, host.coordinates(kRotor)[0][0]);
}

TEST_F(MotionSteps, FileWithGeometryOfItsOwnAndAMotionStartsFromTheBaseAllTheSame) {
  testkit::Mesh mesh = rotor_and_stator();
  write_step(0, file_at(0, {mesh}));
  mesh.nodes.x.values()[0] = 77.0;
  testkit::File second = file_at(1, {mesh});
  second.region_sets[0].add(
      motion_of(0, {{.names = {"rotor"}, .actions = {Action::translate({1.0, 0.0, 0.0})}}}));
  write_step(1, second);
  open(path(0));
  EXPECT_EQ(trace_of(0), select(1, 1));
  EXPECT_EQ((Points{{1, 0, 0}, {2, 0, 0}, {1, 1, 0}, {1, 0, 1}}), host.coordinates(kRotor));
}

// Cycle 1 has no nodes: the motion starts from those of cycle 0.
TEST_F(MotionSteps, BaseWithoutNodesStartsFromTheUnmovedGeometryThatAppliesToIt) {
  write_step(0, file_at(0, {rotor_and_stator()}));
  testkit::File second = file_at(1);
  second.add_region_set();
  write_step(1, second);
  for (const int cycle : {2, 3})
    write_step(cycle, moved(cycle, 1, {Action::translate({1.0 * cycle, 0.0, 0.0})}));
  open(path(0));
  for (const int step : {1, 2, 1, 1, 2}) {  // the steps of the geometry are cycles 0, 2 and 3
    const auto shift = static_cast<float>(step + 1);
    EXPECT_EQ(trace_of(0) + trace_of(1), select(1, step));
    EXPECT_EQ((Points{{shift, 0, 0}, {shift + 1, 0, 0}, {shift, 1, 0}, {shift, 0, 1}}),
              host.coordinates(kRotor));
    EXPECT_EQ(kStatorNodes, host.coordinates(kStator));
  }
}

// The motion of the base file itself is not applied.
TEST_F(MotionSteps, BaseThatMovesItselfIsTakenUnmoved) {
  write_step(0, file_at(0, {rotor_and_stator()}));
  write_step(1, moved(1, 0, {Action::translate({100.0, 0.0, 0.0})}));
  write_step(2, moved(2, 1, {Action::translate({1.0, 0.0, 0.0})}));
  open(path(0));
  for (const int step : {1, 2, 2, 1, 2}) {
    select(1, step);
    EXPECT_EQ(step == 1 ? 100.0F : 1.0F, host.coordinates(kRotor)[0][0]);
  }
}

TEST_F(MotionSteps, OnlyTheRegionSetWithAMotionMoves) {
  const testkit::Mesh mesh = rotor_and_stator();
  write_step(0, file_at(0, {mesh, mesh}));
  testkit::File second = file_at(1);
  second.add_region_set();
  second.add_region_set().add(
      motion_of(0, {{.names = {"rotor"}, .actions = {Action::translate({0.0, 0.0, 9.0})}}}));
  write_step(1, second);
  open(path(0));
  EXPECT_EQ(trace_of(0), select(1, 1)) << "one region set, not two";
  // Surfaces of both sets, then volumes of both sets.
  EXPECT_EQ((Points{{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}}), host.coordinates(3));
  EXPECT_EQ((Points{{0, 0, 9}, {1, 0, 9}, {0, 1, 9}, {0, 0, 10}}), host.coordinates(5));
}

TEST_F(MotionSteps, SectionWithoutRegionsMovesNothing) {
  write_step(0, file_at(0, {rotor_and_stator()}));
  testkit::File second = file_at(1);
  second.add_region_set().add(motion_of(0, {}));
  write_step(1, second);
  open(path(0));
  const Points before = host.coordinates(kWholeMesh);
  EXPECT_EQ(trace_of(0), select(1, 1));
  EXPECT_EQ(before, host.coordinates(kWholeMesh));
}

TEST_F(MotionSteps, NodesInDoublePrecisionMoveInDoublePrecision) {
  testkit::Mesh mesh = rotor_and_stator();
  mesh.nodes.precision = {testkit::Precision::kDouble, testkit::Precision::kDouble,
                          testkit::Precision::kDouble};
  mesh.nodes.x.values()[0] = 100000000.25;
  write_step(0, file_at(0, {mesh}));
  write_step(1, moved(1, 0, {Action::translate({-100000000.0, 0.0, 0.0})}));
  open(path(0));
  select(1, 1);
  EXPECT_EQ(0.25F, host.coordinates(kRotor)[0][0]) << "in single precision the quarter would be lost";
}

TEST_F(MotionSteps, MovedNodesKeepTheirPrecisionPerAxis) {
  testkit::Mesh mesh = rotor_and_stator();
  mesh.nodes.precision = {testkit::Precision::kSingle, testkit::Precision::kDouble,
                          testkit::Precision::kSingle};
  for (auto* axis : {&mesh.nodes.x, &mesh.nodes.y}) axis->values()[0] = 100000000.25;
  write_step(0, file_at(0, {mesh}));
  write_step(1, moved(1, 0, {Action::translate({-100000000.0, -100000000.0, 0.0})}));
  open(path(0));
  select(1, 1);
  EXPECT_EQ(0.0F, host.coordinates(kRotor)[0][0]);
  EXPECT_EQ(0.25F, host.coordinates(kRotor)[0][1]);
}

TEST_F(MotionSteps, MotionStoredInSinglePrecisionIsRead) {
  write_step(0, file_at(0, {rotor_and_stator()}));
  testkit::File second = file_at(1);
  second.add_region_set().add(testkit::motion_section(
      {.base_cycle = 0,
       .regions = {{.names = {"rotor"},
                    .actions = {Action::translate({0.5, 0.25, -1.0}),
                                Action::rotate({0.0, 0.0, 0.0}, {0.0, 0.0, 2.0}, kPi / 2)}}},
       .precision = testkit::Precision::kSingle,
       .name_length = 100}));
  write_step(1, second);
  open(path(0));
  select(1, 1);
  expect_near({{-0.25, 0.5, -1}, {-0.25, 1.5, -1}, {-1.25, 0.5, -1}, {-0.25, 0.5, 0}},
              host.coordinates(kRotor));
}

TEST_F(MotionSteps, ValuesStayWithTheirNodes) {
  testkit::File first = file_at(0, {rotor_and_stator()});
  first.region_sets[0].add(numbered_scalar("T", 8));
  write_step(0, first);
  testkit::File second = turned(1, kPi);
  second.region_sets[0].add(numbered_scalar("T", 8, 50.0));
  write_step(1, second);
  open(path(0));
  select(1, 1);
  select(2, 1);
  expect_near(turned_rotor(kPi), host.coordinates(kRotor));
  EXPECT_EQ((Floats{50, 51, 52, 53}), host.scalar(1, kRotor));
  EXPECT_EQ((Floats{54, 55, 56, 57}), host.scalar(1, kStator));
}

TEST_F(MotionSteps, BaseFileThatIsGoneLeavesTheGeometryAndSaysSo) {
  write_step(0, file_at(0, {rotor_and_stator()}));
  write_step(1, turned(1, kPi / 2));
  open(path(0));
  select(1, 1);
  std::filesystem::remove(path(0));
  EXPECT_EQ(trace_of(0) + "FAILED TO OPEN " + path(0).string() + "\nFAILED TO READ GEOMETRY DATA IN " +
                path(0).string() + ".\n",
            select(1, 1));
  expect_near(turned_rotor(kPi / 2), host.coordinates(kRotor));
}

}  // namespace
}  // namespace reader_test
