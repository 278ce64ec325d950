// Surface regions, region by region and as arrays.
#include "format/surface_geometry.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

#include "testkit/mesh.h"
#include "tests/format/input.h"
#include "tests/support/empty_list.h"
#include "tests/support/thrown_message.h"

namespace {

using testkit::Block;
using testkit::RegionForm;
using testkit::Section;

using Surfaces = std::vector<fld::smart_ptr<fld::SurfaceGeometry>>;
using Ints = std::vector<int>;

// For both forms, which must give the same regions.
class SurfaceGeometry : public EmptyList, public testing::WithParamInterface<RegionForm> {
 protected:
  static void read_from(FILE* stream, Surfaces& list) {
    if (GetParam() == RegionForm::kArray) {
      fld::FLDV4_SurfaceGeometryArray(stream, list);
    } else {
      fld::FLDV4_SurfaceGeometry(stream, list);
    }
  }
  static Surfaces read(const Section& section) {
    const Input input(body_of(section) + kNext);
    Surfaces list;
    read_from(input.stream(), list);
    EXPECT_EQ(input.rest(), kNext);
    return list;
  }
  static std::string error_of(const Section& section) {
    const Input input(body_of(section));
    Surfaces list;
    return thrown_message([&] { read_from(input.stream(), list); });
  }
  static Section section_of(const std::vector<testkit::Surface>& surfaces) {
    return testkit::surfaces_section(surfaces, GetParam());
  }
};

INSTANTIATE_TEST_SUITE_P(As, SurfaceGeometry, testing::Values(RegionForm::kPerRegion, RegionForm::kArray),
                         [](const auto& info) {
                           return info.param == RegionForm::kArray ? "Array" : "PerRegion";
                         });

// Three faces, then one.
std::vector<testkit::Surface> wall_and_inlet() {
  testkit::Surface wall;
  wall.name = "wall";
  wall.add(testkit::kTriangleFace, {1, 2, 3}, 10);
  wall.add(testkit::kQuadrilateralFace, {4, 5, 6, 7}, -1);
  wall.add(testkit::kLineFace, {8, 9}, 12);
  testkit::Surface inlet;
  inlet.name = "inlet";
  inlet.add(testkit::kTriangleFace, {20, 21, 22}, 13);
  return {wall, inlet};
}

Ints types_of(const fld::SurfaceGeometry& surface) {
  return {surface.faceType, surface.faceType + surface.nface};
}
Ints links_of(const fld::SurfaceGeometry& surface) {
  return {surface.faceLink, surface.faceLink + surface.nface};
}
Ints nodes_of(const fld::SurfaceGeometry& surface) {
  return {surface.faceNode, surface.faceNode + surface.nfaceNode};
}

TEST_P(SurfaceGeometry, EveryRegionGetsItsOwnEntries) {
  const Surfaces list = read(section_of(wall_and_inlet()));
  ASSERT_EQ(list.size(), 2U);
  EXPECT_STREQ(list[0]->name, "wall");
  EXPECT_EQ(list[0]->nface, 3);
  EXPECT_EQ(types_of(*list[0]), (Ints{133, 134, 122}));
  EXPECT_EQ(links_of(*list[0]), (Ints{10, -1, 12}));
  EXPECT_EQ(list[0]->nfaceNode, 9);
  EXPECT_EQ(nodes_of(*list[0]), (Ints{1, 2, 3, 4, 5, 6, 7, 8, 9}));
  EXPECT_STREQ(list[1]->name, "inlet");
  EXPECT_EQ(list[1]->nface, 1);
  EXPECT_EQ(types_of(*list[1]), (Ints{133}));
  EXPECT_EQ(links_of(*list[1]), (Ints{13}));
  EXPECT_EQ(nodes_of(*list[1]), (Ints{20, 21, 22}));
}

TEST_P(SurfaceGeometry, FacesAreNotCountedByShapeYet) {
  const Surfaces list = read(section_of(wall_and_inlet()));
  EXPECT_EQ(list[0]->ntri, 0);
  EXPECT_EQ(list[0]->nquad, 0);
}

TEST_P(SurfaceGeometry, ARegionWithoutFacesHasNoArrays) {
  auto surfaces = wall_and_inlet();
  surfaces.insert(surfaces.begin() + 1, testkit::Surface{.name = "empty"});
  const Surfaces list = read(section_of(surfaces));
  ASSERT_EQ(list.size(), 3U);
  EXPECT_STREQ(list[1]->name, "empty");
  EXPECT_EQ(list[1]->nface, 0);
  EXPECT_EQ(list[1]->nfaceNode, 0);
  EXPECT_EQ(list[1]->faceType, nullptr);
  EXPECT_EQ(list[1]->faceLink, nullptr);
  EXPECT_EQ(list[1]->faceNode, nullptr);
  EXPECT_EQ(types_of(*list[2]), (Ints{133}));
}

TEST_P(SurfaceGeometry, ArraysMayBeSpreadOverRecords) {
  Section section = section_of(wall_and_inlet());
  for (const size_t block : {4U, 5U, 7U}) section.blocks[block] = section.blocks[block].cut(2);
  const Surfaces list = read(section);
  EXPECT_EQ(types_of(*list[0]), (Ints{133, 134, 122}));
  EXPECT_EQ(links_of(*list[0]), (Ints{10, -1, 12}));
  EXPECT_EQ(nodes_of(*list[0]), (Ints{1, 2, 3, 4, 5, 6, 7, 8, 9}));
}

TEST_P(SurfaceGeometry, ANodeCountThatDoesNotFitTheTypesIsCarriedAsRead) {
  auto surfaces = wall_and_inlet();
  surfaces[0].node = {7};
  const Surfaces list = read(section_of(surfaces));
  EXPECT_EQ(list[0]->nface, 3);
  EXPECT_EQ(nodes_of(*list[0]), Ints{7});
}

TEST_P(SurfaceGeometry, ANegativeNodeCountIsAnError) {
  Section section = section_of({wall_and_inlet()[0]});
  section.blocks[6] = Block::integer(-9);
  EXPECT_EQ(error_of(section).substr(0, 17), "NEGATIVE COUNT -9");
}

TEST_P(SurfaceGeometry, ANodeCountBeyondTheFileIsAnError) {
  Section section = section_of({wall_and_inlet()[0]});
  section.blocks[6] = Block::integer(0x7fffffff);
  EXPECT_EQ(error_of(section).substr(0, 46), "COUNT 2147483647 EXCEEDS THE REST OF THE FILE ");
}

TEST_P(SurfaceGeometry, AMissingBlockFails) {
  const size_t blocks = section_of({wall_and_inlet()[0]}).blocks.size();
  for (size_t block = 0; block < blocks; ++block) {
    Section section = section_of({wall_and_inlet()[0]});
    section.blocks.erase(section.blocks.begin() + static_cast<long>(block));
    EXPECT_NE(error_of(section), "nothing was thrown") << block;
  }
}

}  // namespace
