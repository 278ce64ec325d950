// The sector of an annulus, in cylindrical coordinates and with index base 1.
#include <cmath>
#include <numbers>
#include <vector>

#include "samples/sector.h"
#include "tests/reader/sample_test.h"

namespace reader_test {
namespace {

namespace sector = samples::sector;

constexpr double kSixtyDegrees = std::numbers::pi / 3.0;

class SectorSample : public SampleTest {
 protected:
  void SetUp() override { open_sample(sector::write); }
};

TEST_F(SectorSample, SurfacesComeInCartesianCoordinates) {
  for (const auto& p : nodes_of("hub")) EXPECT_NEAR(0.3, std::hypot(p[0], p[1]), 4e-8);
  for (const auto& p : nodes_of("casing")) EXPECT_NEAR(0.6, std::hypot(p[0], p[1]), 8e-8);
  for (const auto& p : nodes_of("periodic_low")) EXPECT_EQ(0.0F, p[1]);
  for (const auto& p : nodes_of("periodic_high")) EXPECT_NEAR(kSixtyDegrees, std::atan2(p[1], p[0]), 1e-7);
  for (const auto& p : nodes_of("inlet")) EXPECT_EQ(0.0F, p[2]);
  for (const auto& p : nodes_of("outlet")) EXPECT_EQ(0.4F, p[2]);
}

TEST_F(SectorSample, WholeMeshComesAsItIsStored) {
  const testkit::Nodes nodes = sector::mesh().nodes;
  const Points points = nodes_of("ALL_ELEMENTS");
  ASSERT_EQ(static_cast<std::size_t>(nodes.size()), points.size());
  for (std::size_t i = 0; i < points.size(); ++i) {
    EXPECT_EQ(static_cast<float>(nodes.x.values()[i]), points[i][0]);
    EXPECT_EQ(static_cast<float>(nodes.y.values()[i]), points[i][1]);
    EXPECT_EQ(static_cast<float>(nodes.z.values()[i]), points[i][2]);
  }
}

TEST_F(SectorSample, IndexBase1IsTakenOff) {
  std::vector<std::int32_t> nodes;
  const int part = part_named("ALL_ELEMENTS");
  const testkit::Mesh mesh = sector::mesh();
  std::map<int, std::vector<std::int32_t>> expected;
  std::size_t at = 0;
  for (const int code : mesh.elements.type.values()) {
    auto& list = expected[code == testkit::kPrism ? 22 : 26];
    for (int j = 0; j < testkit::corner_count(code); ++j)
      list.push_back(mesh.elements.conn.values()[at++] + 1);
  }
  for (const auto& [slot, count] : host.part(part).elements) {
    std::vector<std::int32_t> actual;
    for (const auto& row : host.rows(part, slot, count)) actual.insert(actual.end(), row.begin(), row.end());
    EXPECT_EQ(expected[slot], actual) << slot;
  }
}

// Between two arcs of 24 chords of 2.5 degrees each; half of the thickness is inner, half outer.
TEST_F(SectorSample, VolumesAreThoseOfChordedRings) {
  const auto ring = [](double inner, double outer) {
    return 24.0 / 2.0 * std::sin(kSixtyDegrees / 24.0) * (outer * outer - inner * inner) * 0.4;
  };
  EXPECT_NEAR(ring(0.3, 0.45), volume_of(part_named("inner")), 1e-7);
  EXPECT_NEAR(ring(0.45, 0.6), volume_of(part_named("outer")), 1e-7);
  const Enclosed enclosed =
      enclosed_by({"hub", "casing", "periodic_low", "periodic_high", "inlet", "outlet"});
  EXPECT_NEAR(ring(0.3, 0.6), enclosed.volume, 1e-7);
  for (const double area : enclosed.area) EXPECT_NEAR(0.0, area, 1e-8);
}

TEST_F(SectorSample, PrismsAreInsideAndHexahedraOutside) {
  const auto inner = host.part(part_named("inner")).elements;
  const auto outer = host.part(part_named("outer")).elements;
  ASSERT_EQ(1U, inner.size());
  ASSERT_EQ(1U, outer.size());
  EXPECT_EQ(22, inner.begin()->first);
  EXPECT_EQ(26, outer.begin()->first);
  EXPECT_EQ(inner.begin()->second, 2 * outer.begin()->second) << "two prisms in the place of a hexahedron";
}

// The formulas take Cartesian positions; the whole mesh gives the stored ones in single precision exactly.
TEST_F(SectorSample, QuantitiesAreTheFormulas) {
  const int whole = part_named("ALL_ELEMENTS");
  std::vector<double> pressure;
  std::vector<double> temperature;
  std::array<std::vector<double>, 3> velocity;
  for (const auto& stored : host.coordinates(whole)) {
    const double x = static_cast<double>(stored[0]) * std::cos(static_cast<double>(stored[1]));
    const double y = static_cast<double>(stored[0]) * std::sin(static_cast<double>(stored[1]));
    pressure.push_back(sector::pressure(x, y, stored[2]));
    temperature.push_back(sector::temperature(x, y, stored[2]));
    for (std::size_t c = 0; c < 3; ++c) velocity[c].push_back(sector::velocity(x, y, stored[2])[c]);
  }
  expect_close(pressure, scalar_on("Pressure", whole), 101325.0);
  expect_close(temperature, scalar_on("Temperature", whole), 330.0);
  for (int c = 0; c < 3; ++c) {
    expect_close(velocity[static_cast<std::size_t>(c)], host.vector(variable_named("Velocity"), whole, c),
                 20.0);
  }
}

TEST_F(SectorSample, QuantitiesOfSurfacesAndVolumesAreTheFormulasAtTheirCartesianNodes) {
  for (const char* name : {"hub", "periodic_high", "inner", "outer"}) {
    const int part = part_named(name);
    std::vector<double> pressure;
    for (const auto& p : host.coordinates(part)) pressure.push_back(sector::pressure(p[0], p[1], p[2]));
    expect_close(pressure, scalar_on("Pressure", part), 101325.0);
  }
}

TEST_F(SectorSample, FlowTurnsWithTheSectorAndGoesThroughIt) {
  const Points nodes = nodes_of("casing");
  const Points velocity = vector_on("Velocity", part_named("casing"));
  for (std::size_t i = 0; i < nodes.size(); ++i) {
    EXPECT_NEAR(0.0, nodes[i][0] * velocity[i][0] + nodes[i][1] * velocity[i][1], 1e-6)
        << "no flow through it";
    EXPECT_LT(0.0, nodes[i][0] * velocity[i][1] - nodes[i][1] * velocity[i][0]);
  }
}

}  // namespace
}  // namespace reader_test
