// The findings about the mesh: FLD-501 to FLD-515.
#include "gtest/gtest.h"
#include <algorithm>

#include "testkit/small_meshes.h"
#include "tests/inspect/checked.h"

namespace {

using inspect_test::kNotANumber;
using inspect_test::line;
using inspect_test::Lines;
using inspect_test::told;
using inspect_test::with_integer;
using inspect_test::Written;
using testkit::Mesh;

Written mesh_file(const Mesh& mesh, std::int32_t bias = 0) {
  testkit::File file = testkit::file_of(mesh);
  file.header.set_bias(bias);
  return Written(file);
}

TEST(MeshFindings, AnUnknownElementCode) {
  const Written file = mesh_file(testkit::one_of_each());
  const std::uint64_t place = file.value("LS_Elements", 1) + 4;
  for (const std::int32_t code : {37, 256, -1}) {
    EXPECT_EQ(told(with_integer(file.bytes, place, code)).front(),
              line(501, place, "23, 24, 34, 35, 36 or 38", std::to_string(code)));
  }
}

TEST(MeshFindings, AConnectivityOfTheWrongLength) {
  Mesh mesh = testkit::one_of_each();
  mesh.elements.conn.values().push_back(0);
  const Written file = mesh_file(mesh);
  EXPECT_EQ(told(file.bytes), Lines{line(502, file.value("LS_Elements", 2), "23", "24")});
}

TEST(MeshFindings, AnElementsNodeOutside) {
  Mesh mesh = testkit::one_of_each();  // 11 nodes
  mesh.elements.conn.values()[3] = 11;
  mesh.elements.conn.values()[5] = -1;
  const Written file = mesh_file(mesh);
  EXPECT_EQ(told(file.bytes), (Lines{line(503, file.value("LS_Elements", 3) + 12, "0 to 10", "11"),
                                     line(503, file.value("LS_Elements", 3) + 20, "0 to 10", "-1")}));
  const Written shifted = mesh_file(mesh, 1);
  EXPECT_EQ(told(shifted.bytes), (Lines{line(503, shifted.value("LS_Elements", 3) + 12, "1 to 11", "12"),
                                        line(503, shifted.value("LS_Elements", 3) + 20, "1 to 11", "0")}));
}

TEST(MeshFindings, AnUnknownFaceCode) {
  const Written file = mesh_file(testkit::one_tetrahedron());
  const std::uint64_t place = file.value("LS_SurfaceGeometry", 4) + 8;
  EXPECT_EQ(told(with_integer(file.bytes, place, 130)).front(), line(504, place, "122, 133 or 134", "130"));
}

TEST(MeshFindings, ANodeListOfTheWrongLength) {
  Mesh mesh = testkit::one_of_each();
  mesh.surfaces[1].node.values().push_back(0);  // the second region has one quadrilateral
  const Written file = mesh_file(mesh);
  EXPECT_EQ(told(file.bytes), Lines{line(505, file.value("LS_SurfaceGeometry", 12), "4", "5")});
  const Written gathered(testkit::file_of(mesh, {.surface_form = testkit::RegionForm::kArray}));
  EXPECT_EQ(told(gathered.bytes),
            Lines{line(505, gathered.value("LS_SurfaceGeometryArray", 6) + 4, "4", "5")});
}

TEST(MeshFindings, ANodeListOfLinesTooIsRight) {
  Mesh mesh = testkit::one_tetrahedron();
  mesh.surfaces[0].add(testkit::kLineFace, {0, 1});
  mesh.surfaces[0].add(testkit::kQuadrilateralFace, {0, 1, 2, 3});
  EXPECT_EQ(told(mesh_file(mesh).bytes), Lines{});
}

TEST(MeshFindings, AFacesNodeOutside) {
  Mesh mesh = testkit::one_tetrahedron();
  mesh.surfaces[0].node.values()[1] = 4;
  const Written file = mesh_file(mesh);
  EXPECT_EQ(told(file.bytes), Lines{line(506, file.value("LS_SurfaceGeometry", 7) + 4, "0 to 3", "4")});
}

TEST(MeshFindings, AFacesElementOutside) {
  Mesh mesh = testkit::one_tetrahedron();
  mesh.surfaces[0].link.values()[2] = 1;
  mesh.surfaces[0].link.values()[3] = -1;  // none
  const Written file = mesh_file(mesh);
  EXPECT_EQ(told(file.bytes),
            Lines{line(507, file.value("LS_SurfaceGeometry", 5) + 8, "0 to 0, or -1", "1")});
}

TEST(MeshFindings, ARegionsElementOutside) {
  Mesh mesh = testkit::one_tetrahedron();
  mesh.volumes[0].elements.values()[0] = 1;
  const Written file = mesh_file(mesh);
  EXPECT_EQ(told(file.bytes), Lines{line(508, file.value("LS_VolumeGeometry", 4), "0 to 0", "1")});
}

TEST(MeshFindings, AnotherNumberOfMaterials) {
  Mesh mesh = testkit::one_of_each();
  mesh.materials.values().pop_back();
  const Written file = mesh_file(mesh);
  EXPECT_EQ(told(file.bytes), Lines{line(509, file.value("LS_MatOfElements", 0), "4", "3")});
}

TEST(MeshFindings, AMaterialNumberOutOfRange) {
  Mesh mesh = testkit::one_of_each();
  mesh.materials = {1, 10000, 2, 9999};
  const Written file = mesh_file(mesh);
  EXPECT_EQ(told(file.bytes),
            Lines{line(510, file.value("LS_MatOfElements", 1) + 4, "at most 9999", "10000")});
  mesh.materials = {-2, 9996, 0, 1};  // becomes 1, 9999, 3, 4
  EXPECT_EQ(told(mesh_file(mesh).bytes), Lines{});
  mesh.materials = {0, 9999, 1, 2};  // stays
  EXPECT_EQ(told(mesh_file(mesh).bytes), Lines{});
  mesh.materials = {-2, 9997, 0, 1};
  EXPECT_EQ(told(mesh_file(mesh).bytes),
            Lines{line(510, file.value("LS_MatOfElements", 1) + 4, "at most 9996", "9997")});
}

TEST(MeshFindings, CoordinatesThatAreNoNumbers) {
  Mesh mesh = testkit::one_of_each();
  mesh.nodes.y.values()[3] = kNotANumber;
  mesh.nodes.y.values()[5] = kNotANumber;
  mesh.nodes.z.values()[0] = -std::numeric_limits<double>::infinity();
  mesh.nodes.precision[2] = testkit::Precision::kDouble;
  const Written file = mesh_file(mesh);
  EXPECT_EQ(told(file.bytes), (Lines{line(511, file.value("LS_Nodes", 2) + 12, "finite numbers", "2 of 11"),
                                     line(511, file.value("LS_Nodes", 3), "finite numbers", "1 of 11")}));
}

TEST(MeshFindings, AnUnknownCoordinateSystem) {
  Mesh mesh = testkit::one_tetrahedron();
  mesh.coordinate_system = 2;
  const Written file = mesh_file(mesh);
  EXPECT_EQ(told(file.bytes), Lines{line(512, file.value("LS_CoordinateSystem", 0), "0 or 1", "2")});
}

TEST(MeshFindings, FlatElementsAreANote) {
  Mesh mesh = testkit::one_tetrahedron();
  mesh.elements.add(testkit::kTriangle, {0, 1, 2});
  mesh.elements.add(testkit::kQuadrilateral, {0, 1, 2, 3});
  mesh.materials = {1, 1, 1};
  const Written file = mesh_file(mesh);
  EXPECT_EQ(told(file.bytes), Lines{line(513, file.value("LS_Elements", 1) + 4, "solids", "2 of 3")});
  EXPECT_FALSE(inspect_test::finds(file.bytes, true));
  // The first one is told of, also in records of two elements.
  testkit::File split = testkit::file_of(mesh);
  split.split = 2;
  const Written written(split);
  EXPECT_EQ(told(written.bytes), Lines{line(513, written.value("LS_Elements", 1) + 4, "solids", "2 of 3")});
}

TEST(MeshFindings, AMeshWithNothingInIt) {
  const Written file = mesh_file(Mesh{});
  EXPECT_EQ(told(file.bytes), (Lines{line(214, file.title("OverlapStart_1"), "LS_MatOfElements", "none"),
                                     line(514, file.value("LS_Elements", 0), "elements", "0"),
                                     line(514, file.value("LS_Nodes", 0), "nodes", "0")}));
}

TEST(MeshFindings, TooManyRegionsToCompare) {
  Mesh mesh = testkit::one_tetrahedron();
  mesh.surfaces.clear();
  testkit::File file = testkit::file_of(mesh);
  // The last one, whose lists are not compared, has a face and lists two of its three corners.
  constexpr std::int64_t kRegions = 1000001;
  const auto zeros_and = [](std::int32_t last) {
    return testkit::Block::integers(
        testkit::concatenate<std::int32_t>({testkit::Ints::hole(kRegions - 1), {last}}));
  };
  file.region_sets.front().section("LS_SurfaceGeometry") = {
      .title = "LS_SurfaceGeometryArray",
      .blocks = {testkit::Block::integer(kRegions), testkit::Block::integer(0),
                 testkit::Block::characters(""), zeros_and(1),
                 testkit::Block::integers({testkit::kTriangleFace}), testkit::Block::integers({0}),
                 zeros_and(2), testkit::Block::integers({0, 1})}};
  const Written written(file);
  EXPECT_EQ(told(written.bytes), Lines{line(515, written.value("LS_SurfaceGeometryArray", 3) + 4 * 999999,
                                            "at most 1000000", "more")});
}

}  // namespace
