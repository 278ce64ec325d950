// Cylindrical region sets: radius, angle and z become x, y and z, except for the whole mesh.
#include <numbers>

#include "tests/reader/loaded_reader.h"
#include "tests/reader/small_datasets.h"

namespace reader_test {
namespace {

class CoordinateSystems : public LoadedReader {
 protected:
  // Node 0 at radius 2, a quarter turn, z = 5; a surface and a volume that contain it.
  void open_with(std::optional<std::int32_t> system,
                 testkit::Precision precision = testkit::Precision::kSingle) {
    testkit::Mesh mesh = numbered_nodes(4);
    mesh.nodes.x.values() = {2.0, 1.0, 3.0, 1.0e10};
    mesh.nodes.y.values() = {std::numbers::pi / 2, 0.0, std::numbers::pi, 1.0};
    mesh.nodes.z.values() = {5.0, 6.0, 7.0, 8.0};
    mesh.nodes.precision = {precision, precision, precision};
    add_element(mesh, testkit::kTetrahedron, 0);
    add_triangle_surface(mesh, "wall", {0, 1, 2});
    add_volume(mesh, "fluid", {0});
    mesh.coordinate_system = system;
    write_and_open(testkit::file_of(mesh));
  }
  static constexpr int kSurface = 1;
  static constexpr int kVolume = 2;
  static constexpr int kWholeMesh = 3;

  // Products in double precision of the values rounded to single: 2 cos(1.5707964f), 2 sin(1.5707964f);
  // 3 cos(3.1415927f), 3 sin(3.1415927f). The angles are off by 4.371139000186e-8 and 8.742278000372e-8.
  static constexpr std::array<float, 3> kQuarterTurn = {-8.742278000372e-8F, 2.0F, 5.0F};
  static constexpr std::array<float, 3> kNoTurn = {1.0F, 0.0F, 6.0F};
  static constexpr std::array<float, 3> kHalfTurn = {-3.0F, -2.622683400112e-7F, 7.0F};
};

TEST_F(CoordinateSystems, CylindricalNodesOfASurfaceAreConverted) {
  open_with(1);
  EXPECT_EQ((Points{kQuarterTurn, kNoTurn, kHalfTurn}), host.coordinates(kSurface));
}

TEST_F(CoordinateSystems, CylindricalNodesOfAVolumeAreConverted) {
  open_with(1);
  const Points points = host.coordinates(kVolume);
  ASSERT_EQ(4U, points.size());
  EXPECT_EQ(kQuarterTurn, points[0]);
  EXPECT_EQ(kHalfTurn, points[2]);
  // 1e10 cos 1 and 1e10 sin 1.
  EXPECT_EQ((std::array<float, 3>{5.40302305868139717e9F, 8.41470984807896507e9F, 8.0F}), points[3]);
}

TEST_F(CoordinateSystems, DoublePrecisionIsRoundedBeforeItIsConverted) {
  open_with(1, testkit::Precision::kDouble);
  EXPECT_EQ((Points{kQuarterTurn, kNoTurn, kHalfTurn}), host.coordinates(kSurface));
}

TEST_F(CoordinateSystems, WholeMeshIsGivenAsItIsStored) {
  open_with(1);
  EXPECT_EQ((Points{{2.0F, 1.5707964F, 5.0F}, {1, 0, 6}, {3.0F, 3.1415927F, 7.0F}, {1.0e10F, 1, 8}}),
            host.coordinates(kWholeMesh));
}

TEST_F(CoordinateSystems, AskingTwiceConvertsOnce) {
  open_with(1);
  host.coordinates(kVolume);
  EXPECT_EQ(kQuarterTurn, host.coordinates(kVolume)[0]);
  EXPECT_EQ(kQuarterTurn, host.coordinates(kSurface)[0]);
  EXPECT_EQ((std::array<float, 3>{2.0F, 1.5707964F, 5.0F}), host.coordinates(kWholeMesh)[0]);
}

TEST_F(CoordinateSystems, AnyOtherSystemIsCartesian) {
  for (const std::optional<std::int32_t> system : {std::optional<std::int32_t>(), {0}, {2}, {-1}, {257}}) {
    open_with(system);
    for (const int part : {kSurface, kVolume, kWholeMesh}) {
      EXPECT_EQ((std::array<float, 3>{2.0F, 1.5707964F, 5.0F}), host.coordinates(part)[0])
          << system.value_or(-99);
    }
  }
}

TEST_F(CoordinateSystems, EachRegionSetHasItsOwn) {
  testkit::Mesh cylindrical = numbered_mesh(4);
  cylindrical.nodes.y.values() = {0.0, std::numbers::pi, 0.0, 0.0};
  add_volume(cylindrical, "ring", {0});
  testkit::Mesh cartesian = cylindrical;
  cylindrical.coordinate_system = 1;
  write_and_open(file_at(0, {cartesian, cylindrical}));
  EXPECT_EQ((Floats{0, 1, 2, 3}), x_of(host.coordinates(1)));
  EXPECT_EQ((Floats{0, -1, 2, 3}), x_of(host.coordinates(2)));
}

}  // namespace
}  // namespace reader_test
