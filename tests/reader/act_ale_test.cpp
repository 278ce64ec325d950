// Moving the nodes of one region set.
#include <cmath>
#include <cstring>
#include <numbers>
#include <string>

#include "reader/motion.h"
#include "reader/work_tables.h"
#include "tests/reader/linked_reader.h"
#include "tests/reader/small_datasets.h"

namespace reader_test {
namespace {

constexpr double kPi = std::numbers::pi;
using Place = std::array<double, 3>;

fld::ALE_ACT action(const std::string& kind, std::initializer_list<double> data) {
  fld::ALE_ACT act;
  // Kinds keep the trailing blanks of their field.
  const std::string field = kind + std::string(8, ' ');
  memcpy(act.kind, field.data(), field.size());
  std::copy(data.begin(), data.end(), act.data.begin());
  return act;
}

fld::ALE_ACT translate(const Place& d) {
  return action("Translate", {d[0], d[1], d[2]});
}
fld::ALE_ACT scale(const Place& c, const Place& f) {
  return action("Scale", {c[0], c[1], c[2], f[0], f[1], f[2]});
}
fld::ALE_ACT rotate(const Place& c, const Place& u, double angle) {
  return action("Rotate", {c[0], c[1], c[2], u[0], u[1], u[2], angle});
}
fld::ALE_ACT four_points(const std::array<Place, 4>& from, const std::array<Place, 4>& to) {
  fld::ALE_ACT act = action("4Points", {});
  double* place = act.data.data();
  for (const auto& points : {from, to}) {
    for (const Place& point : points) place = std::copy(point.begin(), point.end(), place);
  }
  return act;
}

fld::ALE_REGION region(const std::vector<std::string>& names, const std::vector<fld::ALE_ACT>& actions) {
  return {.nname = static_cast<int>(names.size()), .names = names, .actions = actions};
}

// Three tetrahedra: volume "A" has nodes 0 to 3, "B" nodes 3 to 6 (node 3 is in both), "C" nodes 7 to 10.
class ActAle : public LinkedReader {
 protected:
  void SetUp() override { load(testkit::Precision::kDouble); }

  void load(testkit::Precision precision) { load({precision, precision, precision}); }

  // The precision of x, y and z.
  void load(const std::array<testkit::Precision, 3>& precision) {
    testkit::Mesh mesh;
    const std::vector<Place> places = {{0, 0, 0},  {1, 0, 0},    {0, 1, 0},  {0, 0, 1},
                                       {2, 3, 4},  {5, -1, 0.5}, {-2, 0, 7}, {10, 0, 0},
                                       {11, 0, 0}, {10, 1, 0},   {10, 0, 1}};
    for (const Place& p : places) mesh.nodes.add(p[0], p[1], p[2]);
    mesh.nodes.precision = precision;
    for (const int first : {0, 3, 7}) add_element(mesh, testkit::kTetrahedron, first);
    add_volume(mesh, "A", {0});
    add_volume(mesh, "B", {1});
    add_volume(mesh, "C", {2});
    geometry_ = geometry_of({mesh});
    ASSERT_EQ(0, fld::allocMemoryForGeometry(geometry_));
    entry_ = places;
  }

  void act(const std::vector<fld::ALE_REGION>& regions) {
    EXPECT_EQ("", stderr_of([&] {
                fld::actALE({.base_cycle = 0, .regions = regions}, geometry_->geos[0],
                            fld::element_offsets(0));
              }));
  }
  void act_on_a(const std::vector<fld::ALE_ACT>& actions) { act({region({"A"}, actions)}); }

  Place at(int node) const {
    const fld::Nodes& nodes = *geometry_->geos[0].nodes;
    return {fld::vfpa2double(nodes.x, node), fld::vfpa2double(nodes.y, node),
            fld::vfpa2double(nodes.z, node)};
  }
  void expect_at(int node, const Place& place, double tolerance = 1e-14) const {
    for (std::size_t axis = 0; axis < 3; ++axis) {
      EXPECT_NEAR(place[axis], at(node)[axis], tolerance) << "node " << node << ", axis " << axis;
    }
  }
  void expect_unmoved(const std::vector<int>& nodes) const {
    for (const int node : nodes)
      EXPECT_EQ(entry_[static_cast<std::size_t>(node)], at(node)) << "node " << node;
  }

  fld::smart_ptr<fld::Geometry> geometry_;
  std::vector<Place> entry_;
};

TEST_F(ActAle, TranslateShifts) {
  act_on_a({translate({1.5, -2.0, 0.25})});
  expect_at(0, {1.5, -2, 0.25});
  expect_at(3, {1.5, -2, 1.25});
  expect_unmoved({4, 5, 6, 7, 8, 9, 10});
}

TEST_F(ActAle, ScaleStretchesAboutItsCentre) {
  act_on_a({scale({1, 2, 3}, {2, 3, -1})});
  expect_at(0, {-1, -4, 6});
  expect_at(1, {1, -4, 6});
  expect_at(2, {-1, -1, 6});
  expect_at(3, {-1, -4, 5});
}

TEST_F(ActAle, ActionsOfARegionFollowOneAnother) {
  act_on_a({translate({1, 0, 0}), scale({0, 0, 0}, {2, 2, 2})});
  expect_at(0, {2, 0, 0});
  expect_at(1, {4, 0, 0});
  expect_at(2, {2, 2, 0});
}

TEST_F(ActAle, RotateTurnsRightHandedAboutAnAxisOfAnyLength) {
  act_on_a({rotate({0, 0, 0}, {0, 0, 2}, kPi / 2)});
  expect_at(1, {0, 1, 0});
  expect_at(2, {-1, 0, 0});
  expect_at(3, {0, 0, 1});
}

TEST_F(ActAle, RotateAboutEachAxis) {
  act_on_a({rotate({0, 0, 0}, {5, 0, 0}, kPi / 2)});
  expect_at(2, {0, 0, 1});
  expect_at(3, {0, -1, 0});
  load(testkit::Precision::kDouble);
  act_on_a({rotate({0, 0, 0}, {0, 0.1, 0}, kPi / 2)});
  expect_at(1, {0, 0, -1});
  expect_at(3, {1, 0, 0});
}

// A third of a turn about the space diagonal maps x to y, y to z and z to x.
TEST_F(ActAle, RotateAboutTheSpaceDiagonal) {
  act_on_a({rotate({0, 0, 0}, {3, 3, 3}, 2 * kPi / 3)});
  expect_at(1, {0, 1, 0});
  expect_at(2, {0, 0, 1});
  expect_at(3, {1, 0, 0});
}

TEST_F(ActAle, CentreOfARotationIsSubtractedAndNotAddedBack) {
  act_on_a({rotate({1, 0, 0}, {0, 0, 1}, 0.0)});
  expect_at(1, {0, 0, 0});
  expect_at(0, {-1, 0, 0});
  load(testkit::Precision::kDouble);
  act_on_a({rotate({1, 2, 3}, {0, 0, 1}, kPi / 2)});
  expect_at(0, {2, -1, -3});
}

// Without an axis the matrix is the cosine times the identity.
TEST_F(ActAle, AxisOfLength0ScalesByTheCosine) {
  act_on_a({rotate({0, 0, 0}, {0, 0, 0}, kPi / 3)});
  expect_at(1, {0.5, 0, 0}, 1e-15);
  expect_at(2, {0, 0.5, 0}, 1e-15);
  expect_at(3, {0, 0, 0.5}, 1e-15);
}

TEST_F(ActAle, AngleIsInRadians) {
  act_on_a({rotate({0, 0, 0}, {0, 0, 1}, 1.0)});
  expect_at(1, {0.5403023058681398, 0.8414709848078965, 0}, 1e-15);
}

TEST_F(ActAle, FourPointsCarriesItsSourcesOntoItsTargets) {
  const std::array<Place, 4> from = {{{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}}};
  const std::array<Place, 4> to = {{{1, 2, 3}, {3, 2, 3}, {1, 5, 4}, {0, 2, 7}}};
  act_on_a({four_points(from, to)});
  for (int node = 0; node < 4; ++node) expect_at(node, to[static_cast<std::size_t>(node)]);
}

TEST_F(ActAle, FourPointsIsAnAffineMapOfEveryOtherNode) {
  // Turned by a right angle about z, twice as large, and shifted.
  const std::array<Place, 4> from = {{{1, 1, 1}, {2, 1, 1}, {1, 2, 1}, {1, 1, 2}}};
  const std::array<Place, 4> to = {{{5, 5, 5}, {5, 7, 5}, {3, 5, 5}, {5, 5, 7}}};
  act_on_a({four_points(from, to)});
  const auto expected = [](const Place& p) {
    return Place{5 - 2 * (p[1] - 1), 5 + 2 * (p[0] - 1), 5 + 2 * (p[2] - 1)};
  };
  for (int node = 0; node < 4; ++node)
    expect_at(node, expected(entry_[static_cast<std::size_t>(node)]), 1e-13);
}

TEST_F(ActAle, FourPointsOntoThemselvesChangesNothing) {
  const std::array<Place, 4> points = {{{1, 2, 3}, {4, 5, 7}, {0, -1, 2}, {3, 3, -3}}};
  act_on_a({four_points(points, points)});
  for (int node = 0; node < 4; ++node) expect_at(node, entry_[static_cast<std::size_t>(node)], 1e-13);
}

TEST_F(ActAle, FourPointsFromAPlaneIsSkipped) {
  const std::array<Place, 4> flat = {{{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {1, 1, 0}}};
  const std::array<Place, 4> to = {{{9, 9, 9}, {8, 8, 8}, {7, 7, 7}, {1, 2, 3}}};
  act_on_a({four_points(flat, to)});
  expect_unmoved({0, 1, 2, 3});
  act_on_a({translate({1, 0, 0}), four_points(flat, to), translate({1, 0, 0})});
  expect_at(0, {2, 0, 0});
}

TEST_F(ActAle, OtherKindsHaveNoEffect) {
  act_on_a({action("Shear", {1, 2, 3}), action("rotate", {1, 2, 3}), action("", {1, 2, 3})});
  expect_unmoved({0, 1, 2, 3});
}

TEST_F(ActAle, KindsThatBeginWithAKeywordAreThatKind) {
  fld::ALE_ACT act = translate({1, 0, 0});
  memcpy(act.kind, "TranslateSlowly", 16);
  act_on_a({act});
  expect_at(0, {1, 0, 0});
}

TEST_F(ActAle, SharedNodeEndsWithTheLaterRegionsMotionFromItsEntryPosition) {
  act({region({"A"}, {translate({100, 0, 0})}), region({"B"}, {scale({0, 0, 0}, {2, 2, 2})})});
  expect_at(0, {100, 0, 0});
  expect_at(3, {0, 0, 2});
  expect_at(4, {4, 6, 8});
}

TEST_F(ActAle, NodeOfTwoRegionsGoesBackEvenWhenTheLaterOneHasNoActions) {
  act({region({"A"}, {translate({100, 0, 0})}), region({"B"}, {})});
  expect_at(0, {100, 0, 0});
  expect_unmoved({3, 4, 5, 6});
}

TEST_F(ActAle, RegionNamedTwiceIsMovedByTheSecondAlone) {
  act({region({"A"}, {translate({1, 0, 0})}), region({"A"}, {translate({0, 5, 0})})});
  expect_at(0, {0, 5, 0});
  expect_at(1, {1, 5, 0});
}

TEST_F(ActAle, NamesOfOneRegionMoveTogetherAndOnce) {
  act({region({"A", "B", "A"}, {translate({1, 0, 0})})});
  expect_at(0, {1, 0, 0});
  expect_at(3, {1, 0, 1});
  expect_at(4, {3, 3, 4});
  expect_unmoved({7, 8, 9, 10});
}

TEST_F(ActAle, EachNodeFollowsTheLastOfItsRegionsWhicheverVolumesTheyShare) {
  act({region({"A", "B", "C"}, {translate({100, 0, 0})}), region({"C", "B"}, {translate({0, 1, 0})}),
       region({"A", "nobody"}, {translate({0, 0, 1}), scale({0, 0, 0}, {1, 1, 2})}),
       region({"C", "C"}, {translate({0, 7, 0})})});
  expect_at(0, {0, 0, 2});
  expect_at(3, {0, 0, 4});
  expect_at(4, {2, 4, 4});
  expect_at(6, {-2, 1, 7});
  expect_at(7, {10, 7, 0});
  expect_at(10, {10, 7, 1});
}

TEST_F(ActAle, VolumeWhoseNameBeginsTheRegionsNameIsMeant) {
  act({region({"B_1"}, {translate({1, 0, 0})})});
  expect_at(4, {3, 3, 4});
  expect_unmoved({0, 1, 2, 7});
}

TEST_F(ActAle, RegionWhoseNameBeginsTheVolumesNameIsNotMeant) {
  testkit::Mesh mesh = numbered_mesh(4);
  add_volume(mesh, "BLADE_1", {0});
  geometry_ = geometry_of({mesh});
  ASSERT_EQ(0, fld::allocMemoryForGeometry(geometry_));
  act({region({"BLADE"}, {translate({1, 0, 0})})});
  EXPECT_EQ((Place{0, 0, 0}), at(0));
}

TEST_F(ActAle, FirstVolumeThatMatchesIsTaken) {
  testkit::Mesh mesh = numbered_nodes(8);
  for (const int first : {0, 4}) add_element(mesh, testkit::kTetrahedron, first);
  add_volume(mesh, "BLADE", {0});
  add_volume(mesh, "BLADE_1", {1});
  geometry_ = geometry_of({mesh});
  ASSERT_EQ(0, fld::allocMemoryForGeometry(geometry_));
  act({region({"BLADE_1"}, {translate({0.5, 0, 0})})});
  EXPECT_EQ((Place{0.5, 0, 0}), at(0)) << "BLADE comes first and BLADE_1 begins with it";
  EXPECT_EQ((Place{4, 40, -4}), at(4));
}

TEST_F(ActAle, NamesWithoutAVolumeAreSkipped) {
  act({region({"nobody", "A"}, {translate({1, 0, 0})}), region({"nobody"}, {translate({5, 5, 5})}),
       region({}, {translate({5, 5, 5})})});
  expect_at(0, {1, 0, 0});
  expect_unmoved({4, 5, 6, 7});
}

TEST_F(ActAle, NothingMovesWithoutRegions) {
  act({});
  expect_unmoved({0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10});
}

TEST_F(ActAle, SinglePrecisionIsRoundedAfterEveryAction) {
  load(testkit::Precision::kSingle);
  // 2^24 + 1 is no float: after the first action the one is lost.
  act_on_a({translate({16777217, 0, 0}), translate({-16777216, 0, 0})});
  EXPECT_EQ((Place{0, 0, 0}), at(0));
  load(testkit::Precision::kDouble);
  act_on_a({translate({16777217, 0, 0}), translate({-16777216, 0, 0})});
  EXPECT_EQ((Place{1, 0, 0}), at(0));
}

// In every combination of widths; values rounded to single precision can be told from others.
TEST_F(ActAle, EveryMotionKeepsThePrecisionOfEachAxis) {
  const double c = std::cos(1.0);
  const double s = std::sin(1.0);
  const std::array<Place, 4> corners = {{{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {0, 0, 1}}};
  const std::array<Place, 4> shifted = {{{0.1, 0.2, 0.3}, {1.1, 0.2, 0.3}, {0.1, 1.2, 0.3}, {0.1, 0.2, 1.3}}};
  const std::vector<std::pair<fld::ALE_ACT, Place>> motions = {
      {translate({0.1, 0.2, 0.3}), {2.1, 3.2, 4.3}},
      {scale({0, 0, 0}, {0.1, 0.2, 0.3}), {0.2, 0.6, 1.2}},
      {rotate({0, 0, 0.1}, {0, 0, 1}, 1.0), {2 * c - 3 * s, 2 * s + 3 * c, 3.9}},
      {four_points(corners, shifted), {2.1, 3.2, 4.3}},
  };
  for (int mixture = 0; mixture < 8; ++mixture) {
    const auto is_double = [mixture](std::size_t axis) { return (mixture >> axis & 1) != 0; };
    std::array<testkit::Precision, 3> precision;
    for (std::size_t axis = 0; axis < 3; ++axis) {
      precision[axis] = is_double(axis) ? testkit::Precision::kDouble : testkit::Precision::kSingle;
    }
    for (const auto& [motion, place] : motions) {
      load(precision);
      act({region({"B"}, {motion})});
      for (std::size_t axis = 0; axis < 3; ++axis) {
        const double expected = is_double(axis) ? place[axis] : static_cast<float>(place[axis]);
        EXPECT_NEAR(expected, at(4)[axis], 1e-14)
            << motion.kind << ", axis " << axis << ", mixture " << mixture;
      }
    }
  }
}

TEST_F(ActAle, GeometryWithoutNodesOrElementsIsLeftAlone) {
  fld::FLDGEO empty;
  fld::ALE ale;
  ale.regions = {region({"A"}, {translate({1, 0, 0})})};
  EXPECT_EQ("", stderr_of([&] { fld::actALE(ale, empty, nullptr); }));
  geometry_->geos[0].elements = {};
  act_on_a({translate({1, 0, 0})});
  expect_unmoved({0, 1, 2, 3});
}

TEST_F(ActAle, PartsAreMarkedAnewAfterAMotion) {
  testkit::File first = file_at(0, {testkit::one_of_each()});
  write(first, "case_0.fld");
  testkit::File second = file_at(1);
  second.add_region_set().add(
      motion_of(0, {{.names = {"upper"}, .actions = {testkit::Action::translate({1.0, 0.0, 0.0})}}}));
  write(second, "case_1.fld");
  open(in("case_0.fld"));
  const Rows rows = host.rows(3, 26);
  select(1, 1);
  EXPECT_EQ(rows, host.rows(3, 26));
  EXPECT_EQ(10U, host.coordinates(3).size());
}

}  // namespace
}  // namespace reader_test
