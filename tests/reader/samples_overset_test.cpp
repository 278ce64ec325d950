// Two overset region sets with meshes of their own, in double precision.
#include <cmath>
#include <numbers>
#include <utility>
#include <vector>

#include "samples/overset.h"
#include "tests/reader/sample_test.h"

namespace reader_test {
namespace {

namespace overset = samples::overset;

class OversetSample : public SampleTest {
 protected:
  void SetUp() override {
    open_sample(overset::write);
    const int count = host.part_count();
    background_ = count - 1;
    ring_ = count;
  }
  // Clears the cache, so that the other region set's values are not returned.
  void drop_held_values() {
    select(2, 1);
    select(2, 0);
  }
  void expect_mesh(const testkit::Mesh& mesh, int part);

  int background_ = 0;  // the whole meshes
  int ring_ = 0;
};

// Nodes and elements one by one.
void OversetSample::expect_mesh(const testkit::Mesh& mesh, int part) {
  const Points points = host.coordinates(part);
  ASSERT_EQ(static_cast<std::size_t>(mesh.nodes.size()), points.size());
  for (std::size_t i = 0; i < points.size(); ++i) {
    EXPECT_EQ(static_cast<float>(mesh.nodes.x.values()[i]), points[i][0]);
    EXPECT_EQ(static_cast<float>(mesh.nodes.y.values()[i]), points[i][1]);
    EXPECT_EQ(static_cast<float>(mesh.nodes.z.values()[i]), points[i][2]);
  }
  ASSERT_EQ(1U, host.part(part).elements.size()) << "one kind of element";
  const auto [slot, count] = *host.part(part).elements.begin();
  ASSERT_EQ(mesh.elements.size(), count);
  std::vector<std::int32_t> nodes;
  for (const auto& row : host.rows(part, slot, count)) {
    for (const int node : row) nodes.push_back(node - 1);
  }
  EXPECT_EQ(mesh.elements.conn.values(), nodes);
}

TEST_F(OversetSample, BothMeshesHaveTheirOwnNodesAndElements) {
  expect_mesh(overset::background_mesh(), background_);
  expect_mesh(overset::ring_mesh(), ring_);
  expect_mesh(overset::background_mesh(), background_);
}

TEST_F(OversetSample, PartsOfBothSetsAreSortedByKind) {
  const auto names = host.part_names();
  ASSERT_EQ(13U, names.size());
  EXPECT_EQ((std::vector<std::string>{"background", "ring", "ALL_ELEMENTS", "ALL_ELEMENTS"}),
            std::vector<std::string>(names.begin() + 9, names.end()));
}

TEST_F(OversetSample, BackgroundFillsItsBox) {
  EXPECT_NEAR(3.0 * 2.0 * 0.15, volume_of(background_), 1e-6);
  EXPECT_NEAR(3.0 * 2.0 * 0.15, volume_of(part_named("background")), 1e-6);
  EXPECT_NEAR(3.0 * 2.0 * 0.15, enclosed_by({"inlet", "outlet", "sides", "floor", "ceiling"}).volume, 1e-6);
}

// The ring between two regular polygons with a corner every 5 degrees.
TEST_F(OversetSample, RingFillsTheSpaceBetweenItsPolygons) {
  const double inner = overset::kRadius * overset::kRadius;
  const double outer = overset::kRimRadius * overset::kRimRadius;
  const double expected = 72.0 / 2.0 * std::sin(5.0 * std::numbers::pi / 180.0) * (outer - inner) * 0.15;
  EXPECT_NEAR(expected, volume_of(ring_), 1e-7);
  EXPECT_NEAR(expected, volume_of(part_named("ring")), 1e-7);
  const Enclosed enclosed = enclosed_by({"cylinder", "ring_rim", "ring_floor", "ring_ceiling"});
  EXPECT_NEAR(expected, enclosed.volume, 1e-7);
  for (const double area : enclosed.area) EXPECT_NEAR(0.0, area, 1e-8);
}

TEST_F(OversetSample, SurfacesOfTheRingAreCircles) {
  for (const auto& p : nodes_of("cylinder")) EXPECT_NEAR(overset::kRadius, std::hypot(p[0], p[1]), 3e-8);
  for (const auto& p : nodes_of("ring_rim")) EXPECT_NEAR(overset::kRimRadius, std::hypot(p[0], p[1]), 6e-8);
}

TEST_F(OversetSample, PressureOfTheBackgroundIsUndefinedWhereItIsBlanked) {
  const testkit::Nodes nodes = overset::background_mesh().nodes;
  const Floats values = scalar_on("Pressure", background_);
  int blanked = 0;
  for (std::size_t i = 0; i < values.size(); ++i) {
    const double x = nodes.x.values()[i];
    const double y = nodes.y.values()[i];
    const bool is_blanked = overset::is_blanked(x, y);
    blanked += is_blanked;
    const auto defined = static_cast<float>(overset::pressure(x, y, nodes.z.values()[i]));
    ASSERT_EQ(is_blanked ? kUndefined : defined, values[i]) << i;
  }
  EXPECT_LT(0, blanked);
}

TEST_F(OversetSample, VelocityOfTheBackgroundIsUndefinedWhereItIsBlanked) {
  const testkit::Nodes nodes = overset::background_mesh().nodes;
  const Points values = vector_on("Velocity", background_);
  for (std::size_t i = 0; i < values.size(); ++i) {
    const double x = nodes.x.values()[i];
    const double y = nodes.y.values()[i];
    const auto v = overset::velocity(x, y, nodes.z.values()[i]);
    for (std::size_t c = 0; c < 3; ++c) {
      ASSERT_EQ(overset::is_blanked(x, y) ? kUndefined : static_cast<float>(v[c]), values[i][c]) << i;
    }
  }
}

TEST_F(OversetSample, QuantitiesOfTheRingAreTheFormulas) {
  const testkit::Nodes nodes = overset::ring_mesh().nodes;
  const Floats pressure = scalar_on("Pressure", ring_);
  const Floats fringe = scalar_on("@BNODE", ring_);
  const Points velocity = vector_on("Velocity", ring_);
  for (std::size_t i = 0; i < pressure.size(); ++i) {
    const double x = nodes.x.values()[i];
    const double y = nodes.y.values()[i];
    const double z = nodes.z.values()[i];
    ASSERT_EQ(static_cast<float>(overset::pressure(x, y, z)), pressure[i]);
    ASSERT_EQ(static_cast<float>(overset::ring_fringe(x, y, z)), fringe[i]);
    for (std::size_t c = 0; c < 3; ++c) {
      ASSERT_EQ(static_cast<float>(overset::velocity(x, y, z)[c]), velocity[i][c]);
    }
  }
}

TEST_F(OversetSample, FringeMarksTheNodesThatTheOtherMeshSupplies) {
  const auto expect_fringe = [&](int part, double (*fringe)(double, double, double)) {
    drop_held_values();
    const Points nodes = host.coordinates(part);
    const Floats values = scalar_on("@BNODE", part);
    float marked = 0.0F;
    for (std::size_t i = 0; i < nodes.size(); ++i) {
      EXPECT_EQ(static_cast<float>(fringe(nodes[i][0], nodes[i][1], nodes[i][2])), values[i]);
      marked += values[i];
    }
    EXPECT_LT(0.0F, marked);
  };
  expect_fringe(background_, overset::background_fringe);
  expect_fringe(ring_, overset::ring_fringe);
}

TEST_F(OversetSample, MaterialTellsTheSetsApart) {
  for (const auto& [part, material] : {std::pair{background_, 1.0F}, std::pair{ring_, 2.0F}}) {
    const auto [slot, count] = *host.part(part).elements.begin();
    EXPECT_EQ(Floats(static_cast<std::size_t>(count), material), host.materials(part, slot));
  }
}

}  // namespace
}  // namespace reader_test
