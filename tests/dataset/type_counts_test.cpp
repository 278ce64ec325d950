// Counting by type, and indices that are out of range.
#include "dataset/type_counts.h"

#include "tests/dataset/dataset_test.h"

namespace fld {
namespace {

using Ints = std::vector<int>;
using test::counts_of;
using test::Six;

void set_nodes(FLDGEO& geo, int nnode) {
  geo.nodes = make_smart<Nodes>();
  geo.nodes->nnode = nnode;
}

void set_elements(FLDGEO& geo, const Ints& types, const Ints& conn = {}) {
  geo.elements = make_smart<Elements>();
  geo.elements->nelem = static_cast<int>(types.size());
  geo.elements->type = test::tracked(types);
  geo.elements->nconn = static_cast<long>(conn.size());
  geo.elements->conn = test::tracked(conn);
}

void add_surface(FLDGEO& geo, const Ints& types, const Ints& links, const Ints& nodes) {
  SurfaceGeometry& surface = *geo.surfaces.emplace_back(make_smart<SurfaceGeometry>());
  surface.nface = static_cast<int>(types.size());
  surface.faceType = test::tracked(types);
  surface.faceLink = test::tracked(links);
  surface.nfaceNode = static_cast<int>(nodes.size());
  surface.faceNode = test::tracked(nodes);
}

void add_volume(FLDGEO& geo, const Ints& elements) {
  VolumeGeometry& volume = *geo.volumes.emplace_back(make_smart<VolumeGeometry>());
  volume.nelem = static_cast<int>(elements.size());
  volume.elem = test::tracked(elements);
}

std::string report_on(FLDGEO geo) {
  count_types(geo);
  test::Messages messages;
  report_bad_indices(count_bad_indices(geo), "/d/a.fld");
  return messages.text();
}

TEST(CountTypes, CountsElementsByCode) {
  FLDGEO geo;
  set_elements(geo, {23, 24, 24, 34, 34, 34, 35, 35, 35, 35, 36, 38, 38});
  count_types(geo);
  EXPECT_EQ(counts_of(*geo.elements), (Six{1, 2, 3, 4, 1, 2}));
}

TEST(CountTypes, OtherCodesCountNowhere) {
  FLDGEO geo;
  set_elements(geo, {0, 133, 134, 22, 25, 33, 37, 39, -34, 256 + 34, 2147483647, -2147483647 - 1});
  add_volume(geo, {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11});
  count_types(geo);
  EXPECT_EQ(counts_of(*geo.elements), Six{});
  EXPECT_EQ(counts_of(*geo.volumes[0]), Six{});
}

TEST(CountTypes, CountsAVolumesElementsByTheirCode) {
  FLDGEO geo;
  set_elements(geo, {34, 38, 36, 35, 24, 23});
  add_volume(geo, {0, 1, 1, 5});
  add_volume(geo, {});
  add_volume(geo, {4, 3, 2});
  count_types(geo);
  EXPECT_EQ(counts_of(*geo.volumes[0]), (Six{1, 0, 1, 0, 0, 2}));
  EXPECT_EQ(counts_of(*geo.volumes[1]), Six{});
  EXPECT_EQ(counts_of(*geo.volumes[2]), (Six{0, 1, 0, 1, 1, 0}));
}

TEST(CountTypes, VolumesElementOutsideTheListIsNotCounted) {
  FLDGEO geo;
  set_elements(geo, {34, 38});
  add_volume(geo, {1, 2, -1, 2147483647, -2147483647 - 1, 0});
  count_types(geo);
  EXPECT_EQ(counts_of(*geo.volumes[0]), (Six{0, 0, 1, 0, 0, 1}));
}

TEST(CountTypes, WithoutElementsVolumesHaveNone) {
  FLDGEO geo;
  add_volume(geo, {0, 1});
  geo.volumes[0]->ntet = 5;
  count_types(geo);
  EXPECT_EQ(counts_of(*geo.volumes[0]), Six{});
}

TEST(CountTypes, CountsTrianglesAndQuadrilateralsOfASurface) {
  FLDGEO geo;
  add_surface(geo, {122, 133, 134}, {-1, -1, -1}, {});
  add_surface(geo, {134, 134, 133, 23, 24, 0}, Ints(6, -1), {});
  add_surface(geo, {}, {}, {});
  geo.surfaces[2]->ntri = 7;
  geo.surfaces[2]->nquad = 8;
  count_types(geo);
  EXPECT_EQ(geo.surfaces[0]->ntri, 1);
  EXPECT_EQ(geo.surfaces[0]->nquad, 1);
  EXPECT_EQ(geo.surfaces[1]->ntri, 1);
  EXPECT_EQ(geo.surfaces[1]->nquad, 2);
  EXPECT_EQ(geo.surfaces[2]->ntri, 0);
  EXPECT_EQ(geo.surfaces[2]->nquad, 0);
}

TEST(CountTypes, CountingAgainGivesTheSame) {
  FLDGEO geo;
  set_elements(geo, {34, 34, 38});
  add_volume(geo, {0, 2});
  count_types(geo);
  count_types(geo);
  EXPECT_EQ(counts_of(*geo.elements), (Six{0, 0, 2, 0, 0, 1}));
  EXPECT_EQ(counts_of(*geo.volumes[0]), (Six{0, 0, 1, 0, 0, 1}));
}

TEST(BadIndices, NothingIsSaidOfAGoodMesh) {
  FLDGEO geo;
  set_nodes(geo, 4);
  set_elements(geo, {34}, {0, 1, 2, 3});
  add_surface(geo, {133, 122}, {0, -1}, {0, 1, 2, 2, 3});
  add_volume(geo, {0});
  EXPECT_EQ(report_on(geo), "");
  EXPECT_EQ(report_on(FLDGEO()), "");
}

TEST(BadIndices, NodesOfElements) {
  FLDGEO geo;
  set_nodes(geo, 4);
  set_elements(geo, {34, 34}, {0, 1, 2, 4, -1, 2147483647, -2147483647 - 1, 3});
  EXPECT_EQ(report_on(geo), "WARNING : 4 NODE NUMBERS OF ELEMENTS OUT OF RANGE IN /d/a.fld\n");
}

TEST(BadIndices, MissingNodesOfElements) {
  FLDGEO geo;
  set_nodes(geo, 8);
  set_elements(geo, {34, 99, 38}, {0, 1, 2, 3, 4, 5, 6});
  EXPECT_EQ(report_on(geo), "WARNING : 5 NODE NUMBERS OF ELEMENTS MISSING IN /d/a.fld\n");
}

TEST(BadIndices, NodesThatNoElementNeedsAreNotMissing) {
  FLDGEO geo;
  set_nodes(geo, 8);
  set_elements(geo, {34}, {0, 1, 2, 3, 4, 5, 6});
  EXPECT_EQ(report_on(geo), "");
}

TEST(BadIndices, NodesOfFacesOfAllSurfacesAreOneLine) {
  FLDGEO geo;
  set_nodes(geo, 4);
  add_surface(geo, {133}, {-1}, {0, 1, 4});
  add_surface(geo, {122}, {-1}, {-1, 5});
  EXPECT_EQ(report_on(geo), "WARNING : 3 NODE NUMBERS OF FACES OUT OF RANGE IN /d/a.fld\n");
}

TEST(BadIndices, MissingNodesOfFaces) {
  FLDGEO geo;
  set_nodes(geo, 4);
  add_surface(geo, {133, 134}, {-1, -1}, {0, 1, 2});
  add_surface(geo, {122, 122}, {-1, -1}, {0, 1, 2});
  EXPECT_EQ(report_on(geo), "WARNING : 5 NODE NUMBERS OF FACES MISSING IN /d/a.fld\n");
}

TEST(BadIndices, ElementsOfFacesButForMinus1) {
  FLDGEO geo;
  set_nodes(geo, 4);
  set_elements(geo, {34}, {0, 1, 2, 3});
  add_surface(geo, {0, 0, 0, 0, 0}, {-1, 0, 1, -2, 99}, {});
  EXPECT_EQ(report_on(geo), "WARNING : 3 ELEMENT NUMBERS OF FACES OUT OF RANGE IN /d/a.fld\n");
}

TEST(BadIndices, ElementsOfVolumes) {
  FLDGEO geo;
  set_nodes(geo, 4);
  set_elements(geo, {34}, {0, 1, 2, 3});
  add_volume(geo, {0, 1});
  add_volume(geo, {-1, 99, 0});
  EXPECT_EQ(report_on(geo), "WARNING : 3 ELEMENT NUMBERS OF VOLUMES OUT OF RANGE IN /d/a.fld\n");
}

TEST(BadIndices, EveryIndexIsOutsideAMissingTable) {
  FLDGEO geo;
  add_surface(geo, {133}, {0}, {0, 1, 2});
  add_volume(geo, {0});
  EXPECT_EQ(report_on(geo),
            "WARNING : 3 NODE NUMBERS OF FACES OUT OF RANGE IN /d/a.fld\n"
            "WARNING : 1 ELEMENT NUMBERS OF FACES OUT OF RANGE IN /d/a.fld\n"
            "WARNING : 1 ELEMENT NUMBERS OF VOLUMES OUT OF RANGE IN /d/a.fld\n");
}

TEST(BadIndices, EveryKindHasALineOfItsOwn) {
  FLDGEO geo;
  set_nodes(geo, 4);
  set_elements(geo, {34, 34}, {0, 1, 2, 9});
  add_surface(geo, {133, 133}, {5, 0}, {0, 1, 9});
  add_volume(geo, {0, 7});
  EXPECT_EQ(report_on(geo),
            "WARNING : 1 NODE NUMBERS OF ELEMENTS OUT OF RANGE IN /d/a.fld\n"
            "WARNING : 4 NODE NUMBERS OF ELEMENTS MISSING IN /d/a.fld\n"
            "WARNING : 1 NODE NUMBERS OF FACES OUT OF RANGE IN /d/a.fld\n"
            "WARNING : 3 NODE NUMBERS OF FACES MISSING IN /d/a.fld\n"
            "WARNING : 1 ELEMENT NUMBERS OF FACES OUT OF RANGE IN /d/a.fld\n"
            "WARNING : 1 ELEMENT NUMBERS OF VOLUMES OUT OF RANGE IN /d/a.fld\n");
}

}  // namespace
}  // namespace fld
