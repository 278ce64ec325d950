// The mesh helpers: volumes add up, faces match, huge meshes equal small ones.
#include <cmath>
#include <gtest/gtest.h>
#include <map>
#include <numeric>
#include <stdexcept>

#include "testkit/box_dataset.h"
#include "testkit/element_faces.h"
#include "testkit/grid_mesh.h"
#include "testkit/mesh_check.h"
#include "testkit/small_meshes.h"
#include "tests/testkit/no_faults.h"

namespace {

using testkit::BoxOptions;
using testkit::BoxShape;
using testkit::CellIndex;
using testkit::CellKind;
using testkit::Grid;
using testkit::Mesh;
using testkit::Vec3;

double total_volume(const Mesh& mesh) {
  const auto all = testkit::volumes(mesh);
  return std::accumulate(all.begin(), all.end(), 0.0);
}

std::map<std::int32_t, int> counts_of(const std::vector<std::int32_t>& types) {
  std::map<std::int32_t, int> counts;
  for (const std::int32_t type : types) ++counts[type];
  return counts;
}

Mesh mesh_of(const Grid& grid) {
  Mesh mesh;
  testkit::append(mesh, testkit::mesh_grid(grid), "all", 1,
                  [](const testkit::GridFace&) { return "outside"; });
  return mesh;
}

Grid unit_grid(const CellIndex& cells) {
  Grid grid;
  grid.cells = cells;
  grid.point = [](const CellIndex& p) {
    return Vec3{static_cast<double>(p[0]), static_cast<double>(p[1]), static_cast<double>(p[2])};
  };
  return grid;
}

TEST(SmallMeshes, OneTetrahedron) {
  const Mesh mesh = testkit::one_tetrahedron();
  EXPECT_EQ(testkit::faults(mesh), kNoFaults);
  EXPECT_DOUBLE_EQ(total_volume(mesh), 1.0 / 6.0);
}

TEST(SmallMeshes, OneOfEach) {
  Mesh mesh = testkit::one_of_each();
  EXPECT_EQ(testkit::faults(mesh), kNoFaults);
  const auto volumes = testkit::volumes(mesh);
  ASSERT_EQ(volumes.size(), 4U);
  EXPECT_DOUBLE_EQ(volumes[0], 1.0);
  EXPECT_DOUBLE_EQ(volumes[1], 0.5);
  EXPECT_DOUBLE_EQ(volumes[2], 1.0 / 3.0);
  EXPECT_DOUBLE_EQ(volumes[3], 1.0 / 6.0);
  const auto faces = counts_of(mesh.surface("outside").type.values());
  EXPECT_EQ(faces,
            (std::map<std::int32_t, int>{{testkit::kTriangleFace, 6}, {testkit::kQuadrilateralFace, 6}}));
}

TEST(MeshCheck, FindsEveryKindOfFault) {
  const auto faults_after = [](auto change) {
    Mesh mesh = testkit::one_of_each();
    change(mesh);
    return testkit::faults(mesh);
  };
  EXPECT_EQ(faults_after([](Mesh& m) { m.elements.conn.values()[3] = 11; }).at(0), "node 11 does not exist");
  EXPECT_EQ(faults_after([](Mesh& m) { m.nodes.add(0, 0, 0); }).at(0), "1 nodes without element");
  EXPECT_EQ(faults_after([](Mesh& m) { m.elements.type.values()[3] = 23; }).at(0), "element of code 23");
  EXPECT_EQ(faults_after([](Mesh& m) { m.elements.conn.values().pop_back(); }).at(0),
            "connectivity does not fit the types");
  EXPECT_EQ(faults_after([](Mesh& m) {
              std::swap(m.elements.conn.values()[19], m.elements.conn.values()[20]);
            }).at(0),
            "element 3 is not positive at corner 0");
  EXPECT_EQ(faults_after([](Mesh& m) {
              m.elements.add(testkit::kTetrahedron, {5, 9, 6, 10});
            }).at(0),
            "more than two elements have a face of element 1");
  EXPECT_EQ(faults_after([](Mesh& m) { m.surfaces[0].link.values()[0] = 3; }).at(0),
            "the linked element does not have face 0 of surface outside");
  EXPECT_EQ(faults_after([](Mesh& m) { m.surfaces[1].node.values()[0] = 0; }).at(0),
            "no element has face 0 of surface @between");
  EXPECT_EQ(faults_after([](Mesh& m) { m.surfaces[0].name = "&VFG_x"; }).size(), 12U);
  // An inward-facing face is not a face of its element.
  EXPECT_EQ(faults_after([](Mesh& m) {
              auto& nodes = m.surfaces[0].node.values();
              std::swap(nodes[1], nodes[3]);
            }).at(0),
            "the linked element does not have face 0 of surface outside");
  // Two positive elements on the same side of the face they share.
  Mesh mesh;
  mesh.nodes = {.x = {0, 1, 0, 0, 0}, .y = {0, 0, 1, 0, 0}, .z = {0, 0, 0, 1, 2}};
  mesh.elements.add(testkit::kTetrahedron, {0, 1, 2, 3});
  mesh.elements.add(testkit::kTetrahedron, {0, 1, 2, 4});
  EXPECT_EQ(testkit::faults(mesh).at(0), "two elements turn the same way a face of element 0");
}

TEST(GridMesh, EveryKindFillsItsCell) {
  const std::map<CellKind, std::size_t> elements{{CellKind::kHexahedron, 1},
                                                 {CellKind::kPrisms, 2},
                                                 {CellKind::kPyramids, 6},
                                                 {CellKind::kTetrahedra, 6}};
  for (const auto& [kind, count] : elements) {
    Grid grid = unit_grid({2, 2, 2});
    grid.kind = [k = kind](const CellIndex&) { return k; };
    const Mesh mesh = mesh_of(grid);
    EXPECT_EQ(mesh.elements.type.values().size(), 8 * count);
    EXPECT_EQ(testkit::faults(mesh), kNoFaults);
    EXPECT_NEAR(total_volume(mesh), 8.0, 1e-12);
  }
}

TEST(GridMesh, AllKindsFitTogether) {
  Grid grid = unit_grid({6, 5, 4});
  grid.kind = [](const CellIndex& c) {
    constexpr std::array kKinds{CellKind::kHexahedron, CellKind::kPrisms, CellKind::kTetrahedra,
                                CellKind::kHexahedron, CellKind::kNone,   CellKind::kPyramids,
                                CellKind::kPrisms};
    return kKinds[static_cast<std::size_t>(c[0] * 3 + c[1] * 5 + c[2] * 11) % kKinds.size()];
  };
  const Mesh mesh = mesh_of(grid);
  EXPECT_EQ(testkit::faults(mesh), kNoFaults);
  int none = 0;
  for (int k = 0; k < 4; ++k) {
    for (int j = 0; j < 5; ++j) {
      for (int i = 0; i < 6; ++i) none += grid.kind({i, j, k}) == CellKind::kNone ? 1 : 0;
    }
  }
  ASSERT_GT(none, 0);
  EXPECT_NEAR(total_volume(mesh), 120.0 - none, 1e-10);
  EXPECT_EQ(counts_of(mesh.elements.type.values()).size(), 4U);
}

TEST(GridMesh, ClosesInARingAroundAnAxis) {
  Grid grid;
  grid.cells = {3, 12, 2};
  grid.closes_along_j = true;
  grid.has_axis = true;
  grid.point = [](const CellIndex& p) {
    const double angle = p[1] * std::acos(-1.0) / 6.0;
    return Vec3{p[0] * std::cos(angle), p[0] * std::sin(angle), static_cast<double>(p[2])};
  };
  grid.kind = [](const CellIndex& c) { return c[0] == 2 ? CellKind::kPrisms : CellKind::kHexahedron; };
  const Mesh mesh = mesh_of(grid);
  EXPECT_EQ(testkit::faults(mesh), kNoFaults);
  EXPECT_EQ(mesh.nodes.size(), 3 * (1 + 3 * 12));
  EXPECT_EQ(counts_of(mesh.elements.type.values()),
            (std::map<std::int32_t, int>{{testkit::kPrism, 24 + 48}, {testkit::kHexahedron, 24}}));
  // A polygon of 12 corners at radius 3, 2 high.
  EXPECT_NEAR(total_volume(mesh), 12.0 * 0.5 * 9.0 * std::sin(std::acos(-1.0) / 6.0) * 2.0, 1e-12);
}

TEST(GridMesh, RefusesToCutCellsAtTheAxis) {
  Grid grid = unit_grid({2, 3, 1});
  grid.has_axis = true;
  grid.kind = [](const CellIndex& c) { return c[0] == 1 ? CellKind::kTetrahedra : CellKind::kHexahedron; };
  EXPECT_THROW(testkit::mesh_grid(grid), std::invalid_argument);
}

TEST(GridMesh, KnowsSidesAndCellsOfOuterFaces) {
  Grid grid = unit_grid({3, 1, 1});
  grid.kind = [](const CellIndex& c) { return c[0] == 1 ? CellKind::kNone : CellKind::kHexahedron; };
  const auto mesh = testkit::mesh_grid(grid);
  int facing_the_gap = 0;
  for (const auto& outer : mesh.outer_faces) {
    const bool faces_gap = (outer.cell[0] == 0 && outer.side == testkit::Side::kHighI) ||
                           (outer.cell[0] == 2 && outer.side == testkit::Side::kLowI);
    if (!faces_gap) continue;
    ++facing_the_gap;
    for (const std::int32_t node : outer.face.corners) {
      EXPECT_EQ(mesh.nodes.x.values()[static_cast<std::size_t>(node)], outer.cell[0] == 0 ? 1.0 : 2.0);
    }
  }
  EXPECT_EQ(facing_the_gap, 2);
  EXPECT_EQ(mesh.outer_faces.size(), 12U);
}

TEST(GridMesh, AppendedZonesShareNoNode) {
  Mesh mesh;
  const auto zone = testkit::mesh_grid(unit_grid({1, 1, 1}));
  const auto surface = [](const testkit::GridFace& face) {
    return face.side == testkit::Side::kLowK ? std::string("floor") : std::string();
  };
  testkit::append(mesh, zone, "first", 1, surface);
  testkit::append(mesh, zone, "second", 5, surface);
  EXPECT_EQ(mesh.nodes.size(), 16);
  EXPECT_EQ(mesh.elements.conn.values()[8], 8);
  EXPECT_EQ(mesh.materials.values(), (std::vector<std::int32_t>{1, 5}));
  EXPECT_EQ(mesh.volume("second").elements.values(), (std::vector<std::int32_t>{1}));
  EXPECT_EQ(mesh.surface("floor").link.values(), (std::vector<std::int32_t>{0, 1}));
  EXPECT_EQ(mesh.surface("floor").node.values(), (std::vector<std::int32_t>{0, 2, 3, 1, 8, 10, 11, 9}));
}

// The mesh of a box dataset with all its functions turned into lists.
Mesh listed(const BoxOptions& options) {
  testkit::File file = testkit::box_file(options);
  const auto ints = [&](const char* title, std::size_t block) {
    const auto& source = std::get<testkit::Ints>(file.region_sets[0].section(title).blocks[block].data);
    std::vector<std::int32_t> list(static_cast<std::size_t>(source.size()));
    source.read(0, list);
    return list;
  };
  const auto reals = [&](const char* title, std::size_t block) {
    const auto& source = std::get<testkit::Reals>(file.region_sets[0].section(title).blocks[block].data);
    std::vector<double> list(static_cast<std::size_t>(source.size()));
    source.read(0, list);
    return list;
  };
  Mesh mesh;
  mesh.elements = {.type = ints("LS_Elements", 1), .conn = ints("LS_Elements", 3)};
  mesh.materials = ints("LS_MatOfElements", 1);
  mesh.nodes = {.x = reals("LS_Nodes", 1), .y = reals("LS_Nodes", 2), .z = reals("LS_Nodes", 3)};
  for (std::size_t s = 0; s < 6; ++s) {
    mesh.surfaces.push_back({.name = "side_" + std::to_string(s),
                             .type = ints("LS_SurfaceGeometry", 4 + 6 * s),
                             .link = ints("LS_SurfaceGeometry", 5 + 6 * s),
                             .node = ints("LS_SurfaceGeometry", 7 + 6 * s)});
  }
  for (std::size_t v = 0; v < static_cast<std::size_t>(options.volumes); ++v) {
    mesh.volumes.push_back({.name = "", .elements = ints("LS_VolumeGeometry", 4 + 3 * v)});
  }
  return mesh;
}

class BoxDataset : public testing::TestWithParam<BoxShape> {};

TEST_P(BoxDataset, IsAWholeMesh) {
  const BoxOptions options{.nx = 7,
                           .ny = 4,
                           .nz = 3,
                           .shape = GetParam(),
                           .lengths = {2.0, 3.0, 4.0},
                           .volumes = 5,
                           .materials = 3};
  const Mesh mesh = listed(options);
  EXPECT_EQ(testkit::faults(mesh), kNoFaults);
  EXPECT_NEAR(total_volume(mesh), 24.0, 1e-10);
  const auto counts = testkit::box_counts(options);
  EXPECT_EQ(counts.nodes, mesh.nodes.size());
  EXPECT_EQ(counts.elements, mesh.elements.size());
  EXPECT_EQ(counts.conn, mesh.elements.conn.size());
  std::vector<std::int32_t> in_volumes;
  for (const auto& volume : mesh.volumes) {
    const auto& elements = volume.elements.values();
    EXPECT_FALSE(elements.empty());
    in_volumes.insert(in_volumes.end(), elements.begin(), elements.end());
  }
  std::vector<std::int32_t> all(static_cast<std::size_t>(mesh.elements.size()));
  std::iota(all.begin(), all.end(), 0);
  EXPECT_EQ(in_volumes, all);
  // 12 rows of cells, 4 of each material.
  const auto materials = counts_of(mesh.materials.values());
  ASSERT_EQ(materials.size(), 3U);
  for (std::int32_t material = 1; material <= 3; ++material) {
    EXPECT_EQ(materials.at(material), mesh.elements.size() / 3);
  }
}

TEST_P(BoxDataset, HasItsSidesWhereTheyAre) {
  const BoxOptions options{.nx = 6, .ny = 3, .nz = 2, .shape = GetParam(), .lengths = {2.0, 3.0, 4.0}};
  const Mesh mesh = listed(options);
  const std::array<double, 6> places{0.0, 2.0, 0.0, 3.0, 0.0, 4.0};
  for (std::size_t s = 0; s < 6; ++s) {
    const auto& along = s < 2 ? mesh.nodes.x : s < 4 ? mesh.nodes.y : mesh.nodes.z;
    for (const std::int32_t node : mesh.surfaces[s].node.values()) {
      EXPECT_EQ(along.values()[static_cast<std::size_t>(node)], places[s]);
    }
  }
}

std::string name_of_shape(const testing::TestParamInfo<BoxShape>& shape) {
  constexpr std::array kNames{"Hexahedra", "Prisms", "Pyramids", "Tetrahedra", "Mixed"};
  return kNames[static_cast<std::size_t>(shape.param)];
}

INSTANTIATE_TEST_SUITE_P(Shapes, BoxDataset,
                         testing::Values(BoxShape::kHexahedra, BoxShape::kPrisms, BoxShape::kPyramids,
                                         BoxShape::kTetrahedra, BoxShape::kMixed),
                         name_of_shape);

TEST(BoxDatasetValues, FollowTheFormulas) {
  const BoxOptions options{
      .nx = 5, .ny = 2, .nz = 2, .shape = BoxShape::kPyramids, .lengths = {1.0, 2.0, 3.0}};
  testkit::File file = testkit::box_file(options);
  const Mesh mesh = listed(options);
  const auto values = [&](const char* title, std::size_t block) {
    return std::get<testkit::Reals>(file.region_sets[0].section(title).blocks[block].data);
  };
  for (std::int64_t node = 0; node < mesh.nodes.size(); ++node) {
    const auto at = static_cast<std::size_t>(node);
    const double x = mesh.nodes.x.values()[at];
    const double y = mesh.nodes.y.values()[at];
    const double z = mesh.nodes.z.values()[at];
    std::array<double, 1> value{};
    values("LS_Scalar:scalar_2", 2).read(node, value);
    EXPECT_EQ(value[0], testkit::box_scalar(2, x, y, z));
    for (std::size_t c = 0; c < 3; ++c) {
      values("LS_Vector:vector_1", 3 + c).read(node, value);
      EXPECT_EQ(value[0], testkit::box_vector(1, static_cast<int>(c), x, y, z));
    }
  }
}

TEST(BoxDatasetValues, DoNotDependOnThePieces) {
  const BoxOptions options{.nx = 9, .ny = 4, .nz = 3, .shape = BoxShape::kMixed};
  testkit::File file = testkit::box_file(options);
  const auto& conn = std::get<testkit::Ints>(file.region_sets[0].section("LS_Elements").blocks[3].data);
  std::vector<std::int32_t> whole(static_cast<std::size_t>(conn.size()));
  conn.read(0, whole);
  std::vector<std::int32_t> pieces(whole.size());
  for (std::size_t first = 0; first < pieces.size(); first += 37) {
    const std::size_t count = std::min<std::size_t>(37, pieces.size() - first);
    conn.read(static_cast<std::int64_t>(first), std::span(pieces).subspan(first, count));
  }
  EXPECT_EQ(pieces, whole);
}

TEST(BoxDatasetValues, RefuseImpossibleBoxes) {
  EXPECT_THROW(testkit::box_file({.nx = 0}), std::invalid_argument);
  EXPECT_THROW(testkit::box_file({.nx = 4, .shape = BoxShape::kMixed}), std::invalid_argument);
  EXPECT_THROW(testkit::box_file({.nx = 2000, .ny = 2000, .nz = 2000}), std::invalid_argument);
  EXPECT_THROW(testkit::box_file({.nx = 1, .ny = 2, .nz = 2, .volumes = 5}), std::invalid_argument);
}

TEST(BoxDatasetValues, CountAHundredMillionElements) {
  const auto counts = testkit::box_counts({.nx = 500, .ny = 500, .nz = 400});
  EXPECT_EQ(counts.elements, 100'000'000);
  EXPECT_EQ(counts.conn, 800'000'000);
  EXPECT_EQ(counts.nodes, 501 * 501 * 401);
}

}  // namespace
