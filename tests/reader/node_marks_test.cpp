// Marking the nodes of surface and volume regions.
#include <string>
#include <vector>

#include "reader/node_selection.h"
#include "reader/work_tables.h"
#include "support/tracked_allocation.h"
#include "tests/reader/linked_reader.h"
#include "tests/reader/small_datasets.h"

namespace reader_test {
namespace {

constexpr char kStale = 5;

class NodeMarks : public LinkedReader {
 protected:
  // `count` marks and two more, all stale.
  static std::vector<char> stale_marks(int count) {
    return std::vector<char>(static_cast<std::size_t>(count) + 2, kStale);
  }
  // The expected marks: 1 at these nodes, 0 at the others, then two stale ones.
  static std::vector<char> marks_at(int count, const std::vector<int>& nodes) {
    std::vector<char> marks(static_cast<std::size_t>(count), 0);
    for (const int node : nodes) marks[static_cast<std::size_t>(node)] = 1;
    marks.insert(marks.end(), 2, kStale);
    return marks;
  }

  fld::smart_ptr<fld::SurfaceGeometry> surface_of(const testkit::Surface& surface) {
    testkit::Mesh mesh = numbered_mesh(4);
    mesh.surfaces = {surface};
    return geometry_of({mesh})->geos[0].surfaces[0];
  }
};

TEST_F(NodeMarks, LineFacesMarkNothing) {
  testkit::Surface surface{.name = "edge and face"};
  surface.add(testkit::kLineFace, {0, 1});
  surface.add(testkit::kTriangleFace, {1, 2, 3});
  auto marks = stale_marks(6);
  EXPECT_EQ(3, fld::fld_markNodesOnSurfaceRegion(surface_of(surface).get(), 6, marks.data()));
  EXPECT_EQ(marks_at(6, {1, 2, 3}), marks);
}

TEST_F(NodeMarks, TrianglesAndQuadrilateralsMarkTheirNodesOnce) {
  testkit::Surface surface{.name = "faces"};
  surface.add(testkit::kTriangleFace, {5, 9, 7});
  surface.add(testkit::kQuadrilateralFace, {9, 7, 2, 5});
  auto marks = stale_marks(10);
  EXPECT_EQ(4, fld::fld_markNodesOnSurfaceRegion(surface_of(surface).get(), 10, marks.data()));
  EXPECT_EQ(marks_at(10, {2, 5, 7, 9}), marks);
}

TEST_F(NodeMarks, FacesOfUnknownCodeDoNotAdvance) {
  testkit::Surface surface{.name = "odd"};
  surface.add(77, {});
  surface.add(testkit::kTriangleFace, {1, 2, 3});
  auto marks = stale_marks(4);
  EXPECT_EQ(3, fld::fld_markNodesOnSurfaceRegion(surface_of(surface).get(), 4, marks.data()));
  EXPECT_EQ(marks_at(4, {1, 2, 3}), marks);
}

TEST_F(NodeMarks, SurfaceWithoutFacesClearsTheMarks) {
  auto marks = stale_marks(4);
  EXPECT_EQ(0, fld::fld_markNodesOnSurfaceRegion(surface_of({.name = "none"}).get(), 4, marks.data()));
  EXPECT_EQ(marks_at(4, {}), marks);
}

TEST_F(NodeMarks, NodesBeyondTheCountAreNotMarked) {
  testkit::Surface surface{.name = "beyond"};
  surface.add(testkit::kQuadrilateralFace, {4, 1, 3, -1});
  auto marks = stale_marks(4);
  EXPECT_EQ(2, fld::fld_markNodesOnSurfaceRegion(surface_of(surface).get(), 4, marks.data()));
  EXPECT_EQ(marks_at(4, {1, 3}), marks);
}

TEST_F(NodeMarks, EveryShapeOfAVolumeMarksItsNodes) {
  const std::vector<std::pair<int, int>> shapes = {{23, 3}, {24, 4}, {34, 4}, {35, 5},
                                                   {36, 6}, {38, 8}, {99, 0}};
  for (const auto& [code, corners] : shapes) {
    testkit::Mesh mesh = numbered_mesh(20);
    std::vector<std::int32_t> nodes = {10, 11, 12, 13, 14, 15, 16, 17};
    mesh.elements.add(code, nodes);
    add_volume(mesh, "one", {1});
    const auto geometry = geometry_of({mesh});
    const fld::FLDGEO& geo = geometry->geos[0];
    const std::vector<long> heads = {0, 4};
    auto marks = stale_marks(20);
    EXPECT_EQ(corners, fld::fld_markNodesOnVolumeRegion(geo.volumes[0].get(), geo.elements.get(),
                                                        heads.data(), 20, marks.data()))
        << code;
    nodes.resize(static_cast<std::size_t>(corners));
    EXPECT_EQ(marks_at(20, nodes), marks) << code;
  }
}

TEST_F(NodeMarks, RepeatedNodesCountOnce) {
  testkit::Mesh mesh = numbered_nodes(8);
  mesh.elements.add(testkit::kHexahedron, {0, 1, 2, 2, 4, 5, 6, 6});
  add_volume(mesh, "wedge", {0, 0});
  const auto geometry = geometry_of({mesh});
  const fld::FLDGEO& geo = geometry->geos[0];
  const long head = 0;
  auto marks = stale_marks(8);
  EXPECT_EQ(
      6, fld::fld_markNodesOnVolumeRegion(geo.volumes[0].get(), geo.elements.get(), &head, 8, marks.data()));
  EXPECT_EQ(marks_at(8, {0, 1, 2, 4, 5, 6}), marks);
}

TEST_F(NodeMarks, OffsetsSayWhereAnElementsNodesBegin) {
  testkit::Mesh mesh = numbered_nodes(12);
  for (const int first : {0, 4, 8}) add_element(mesh, testkit::kTetrahedron, first);
  add_volume(mesh, "last", {2});
  const auto geometry = geometry_of({mesh});
  const fld::FLDGEO& geo = geometry->geos[0];
  const std::vector<long> shifted = {0, 4, 5};
  auto marks = stale_marks(12);
  EXPECT_EQ(4, fld::fld_markNodesOnVolumeRegion(geo.volumes[0].get(), geo.elements.get(), shifted.data(), 12,
                                                marks.data()));
  EXPECT_EQ(marks_at(12, {5, 6, 7, 8}), marks);
}

TEST_F(NodeMarks, ElementsThatThereAreNotMarkNothing) {
  testkit::Mesh mesh = numbered_mesh(4);
  add_volume(mesh, "lost", {1, -1, 1000000});
  const auto geometry = geometry_of({mesh});
  const fld::FLDGEO& geo = geometry->geos[0];
  const long head = 0;
  auto marks = stale_marks(4);
  EXPECT_EQ(
      0, fld::fld_markNodesOnVolumeRegion(geo.volumes[0].get(), geo.elements.get(), &head, 4, marks.data()));
  EXPECT_EQ(marks_at(4, {}), marks);
}

TEST_F(NodeMarks, WorkTablesHoldThePartThatWasServedLast) {
  testkit::Mesh mesh = numbered_mesh(10);
  add_triangle_surface(mesh, "wall", {9, 2, 5});
  add_volume(mesh, "fluid", {0});
  write_and_open(testkit::file_of(mesh));
  host.rows(1, 6);
  EXPECT_EQ((std::vector<char>{0, 0, 1, 0, 0, 1, 0, 0, 0, 1}),
            std::vector<char>(fld::g_mark_node.begin(), fld::g_mark_node.end()));
  EXPECT_EQ(0, fld::g_globalNode2localNode[2]);
  EXPECT_EQ(1, fld::g_globalNode2localNode[5]);
  EXPECT_EQ(2, fld::g_globalNode2localNode[9]);
  host.coordinates(2);
  EXPECT_EQ((std::vector<char>{1, 1, 1, 1, 0, 0, 0, 0, 0, 0}),
            std::vector<char>(fld::g_mark_node.begin(), fld::g_mark_node.end()));
  host.coordinates(3);
  EXPECT_EQ(std::vector<char>(10, 1), std::vector<char>(fld::g_mark_node.begin(), fld::g_mark_node.end()));
}

}  // namespace
}  // namespace reader_test
