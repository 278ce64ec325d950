// Zero-based numbering and positive material numbers.
#include "dataset/index_base.h"

#include <limits>

#include "tests/dataset/dataset_test.h"

namespace fld {
namespace {

constexpr int kLowest = std::numeric_limits<int>::min();
constexpr int kHighest = std::numeric_limits<int>::max();

constexpr LoadedSections kAll = {.surfaces = true, .volumes = true, .elements = true, .materials = true};

// One surface, one volume and one element list with the given indices.
FLDGEO geometry(const std::vector<int>& face_nodes, const std::vector<int>& links,
                const std::vector<int>& volume, const std::vector<int>& conn) {
  FLDGEO geo;
  SurfaceGeometry& surface = *geo.surfaces.emplace_back(make_smart<SurfaceGeometry>());
  surface.nface = static_cast<int>(links.size());
  surface.faceType = test::tracked(std::vector<int>(links.size(), 133));
  surface.faceLink = test::tracked(links);
  surface.nfaceNode = static_cast<int>(face_nodes.size());
  surface.faceNode = test::tracked(face_nodes);
  VolumeGeometry& region = *geo.volumes.emplace_back(make_smart<VolumeGeometry>());
  region.nelem = static_cast<int>(volume.size());
  region.elem = test::tracked(volume);
  geo.elements = make_smart<Elements>();
  geo.elements->nelem = 1;
  geo.elements->type = test::tracked({34});
  geo.elements->nconn = static_cast<long>(conn.size());
  geo.elements->conn = test::tracked(conn);
  return geo;
}

using Indices = std::vector<int>;
Indices face_nodes(const FLDGEO& geo) {
  return test::list(geo.surfaces[0]->faceNode, geo.surfaces[0]->nfaceNode);
}
Indices links(const FLDGEO& geo) {
  return test::list(geo.surfaces[0]->faceLink, geo.surfaces[0]->nface);
}
Indices volume(const FLDGEO& geo) {
  return test::list(geo.volumes[0]->elem, geo.volumes[0]->nelem);
}
Indices conn(const FLDGEO& geo) {
  return test::list(geo.elements->conn, geo.elements->nconn);
}

TEST(ModifyIndicies, SubtractsTheBiasFromEveryIndex) {
  FLDGEO geo = geometry({1, 2, 3}, {1, 5}, {1, 4}, {4, 1, 2, 3});
  modifyIndicies(geo, 1, kAll);
  EXPECT_EQ(face_nodes(geo), (Indices{0, 1, 2}));
  EXPECT_EQ(links(geo), (Indices{0, 4}));
  EXPECT_EQ(volume(geo), (Indices{0, 3}));
  EXPECT_EQ(conn(geo), (Indices{3, 0, 1, 2}));
}

TEST(ModifyIndicies, LeavesFaceLinksOfMinus1Alone) {
  FLDGEO geo = geometry({-1}, {-1, 3, -1, -2}, {-1}, {-1});
  modifyIndicies(geo, 1, kAll);
  EXPECT_EQ(links(geo), (Indices{-1, 2, -1, -3}));
  EXPECT_EQ(face_nodes(geo), Indices{-2});
  EXPECT_EQ(volume(geo), Indices{-2});
  EXPECT_EQ(conn(geo), Indices{-2});
}

TEST(ModifyIndicies, BiasOf0ChangesNothing) {
  FLDGEO geo = geometry({1, 2, 3}, {-1, 5}, {1, 4}, {4, 1});
  modifyIndicies(geo, 0, kAll);
  EXPECT_EQ(face_nodes(geo), (Indices{1, 2, 3}));
  EXPECT_EQ(links(geo), (Indices{-1, 5}));
  EXPECT_EQ(volume(geo), (Indices{1, 4}));
  EXPECT_EQ(conn(geo), (Indices{4, 1}));
}

TEST(ModifyIndicies, AnyBiasIsSubtracted) {
  FLDGEO geo = geometry({1000}, {1001, -1}, {1002}, {1003});
  modifyIndicies(geo, 1000, kAll);
  EXPECT_EQ(face_nodes(geo), Indices{0});
  EXPECT_EQ(links(geo), (Indices{1, -1}));
  EXPECT_EQ(volume(geo), Indices{2});
  EXPECT_EQ(conn(geo), Indices{3});
  modifyIndicies(geo, -7, kAll);
  EXPECT_EQ(conn(geo), Indices{10});
}

TEST(ModifyIndicies, TouchesOnlyWhatWasLoaded) {
  const auto shifted = [](const LoadedSections& loaded) {
    FLDGEO geo = geometry({5}, {5}, {5}, {5});
    modifyIndicies(geo, 1, loaded);
    return Indices{face_nodes(geo)[0], links(geo)[0], volume(geo)[0], conn(geo)[0]};
  };
  EXPECT_EQ(shifted({}), (Indices{5, 5, 5, 5}));
  EXPECT_EQ(shifted({.surfaces = true}), (Indices{4, 4, 5, 5}));
  EXPECT_EQ(shifted({.volumes = true}), (Indices{5, 5, 4, 5}));
  EXPECT_EQ(shifted({.elements = true}), (Indices{5, 5, 5, 4}));
  EXPECT_EQ(shifted({.materials = true}), (Indices{5, 5, 5, 5}));
}

TEST(ModifyIndicies, IndicesThatOverflowWrapRound) {
  FLDGEO geo = geometry({kLowest}, {kLowest}, {kLowest}, {kLowest});
  modifyIndicies(geo, 1, kAll);
  EXPECT_EQ(conn(geo), Indices{kHighest});
  EXPECT_EQ(links(geo), Indices{kHighest});
  geo = geometry({kHighest}, {kHighest}, {kHighest}, {kHighest});
  modifyIndicies(geo, kLowest, kAll);
  EXPECT_EQ(conn(geo), Indices{-1});
}

TEST(ModifyIndicies, TypesStay) {
  FLDGEO geo = geometry({1, 2, 3}, {1}, {1}, {1, 2, 3, 4});
  modifyIndicies(geo, 1, kAll);
  EXPECT_EQ(geo.surfaces[0]->faceType[0], 133);
  EXPECT_EQ(geo.elements->type[0], 34);
}

smart_ptr<MatOfElements> materials(const std::vector<int>& numbers) {
  auto result = make_smart<MatOfElements>();
  result->nelem = static_cast<int>(numbers.size());
  result->mat = test::tracked(numbers);
  return result;
}

std::vector<int> modified(const std::vector<int>& numbers) {
  const auto list = materials(numbers);
  modifyMAT(list);
  return test::list(list->mat, list->nelem);
}

TEST(ModifyMat, ShiftsNegativeNumbersSoThatTheSmallestIs1) {
  EXPECT_EQ(modified({-2, 0, 7}), (std::vector<int>{1, 3, 10}));
  EXPECT_EQ(modified({5, -3, 0}), (std::vector<int>{9, 1, 4}));
  EXPECT_EQ(modified({-1, -1}), (std::vector<int>{1, 1}));
}

TEST(ModifyMat, NumbersFrom0UpPassUnchanged) {
  EXPECT_EQ(modified({0, 7}), (std::vector<int>{0, 7}));
  EXPECT_EQ(modified({3, 9999, 1}), (std::vector<int>{3, 9999, 1}));
  EXPECT_EQ(modified({}), std::vector<int>{});
}

TEST(ModifyMat, WithoutMaterialsDoesNothing) {
  EXPECT_NO_THROW(modifyMAT({}));
}

TEST(ModifyMat, NumberAbove9999IsAReadError) {
  for (const auto& numbers :
       {std::vector<int>{10000}, {1, kHighest}, {-1, 9998}, {kLowest, 0}, {kLowest, kHighest}}) {
    EXPECT_EQ(test::read_error([&] { modifyMAT(materials(numbers)); }), "MATERIAL NUMBER OUT OF RANGE.");
  }
}

TEST(ModifyMat, LargestShiftedNumberIs9999) {
  EXPECT_EQ(modified({-1, 9997}), (std::vector<int>{1, 9999}));
  EXPECT_EQ(modified({kLowest}), std::vector<int>{1});
  EXPECT_EQ(modified({kLowest, kLowest + 9998}), (std::vector<int>{1, 9999}));
}

TEST(DistinctMaterials, AreAscendingAndOnce) {
  const auto list = materials({7, 0, 9999, 7, 3, 0});
  EXPECT_EQ(distinct_materials(list.get()), (std::vector<int>{0, 3, 7, 9999}));
  EXPECT_EQ(distinct_materials(materials({}).get()), std::vector<int>{});
  EXPECT_EQ(distinct_materials(nullptr), std::vector<int>{});
}

}  // namespace
}  // namespace fld
