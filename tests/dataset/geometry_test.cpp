// The geometry of all region sets.
#include "dataset/geometry.h"

#include <gtest/gtest.h>

namespace fld {
namespace {

// Region sets with 3, 0 and 2 surfaces, with 2, 1 and 0 volumes, and with 1, 4 and 0 materials.
Geometry three_region_sets() {
  Geometry geometry;
  geometry.geos.resize(3);
  const size_t surfaces[] = {3, 0, 2};
  const size_t volumes[] = {2, 1, 0};
  const size_t materials[] = {1, 4, 0};
  for (size_t g = 0; g < 3; ++g) {
    FLDGEO& geo = geometry.geos[g];
    for (size_t i = 0; i < surfaces[g]; ++i) geo.surfaces.emplace_back(make_smart<SurfaceGeometry>());
    for (size_t i = 0; i < volumes[g]; ++i) geo.volumes.emplace_back(make_smart<VolumeGeometry>());
    geo.materials.resize(materials[g]);
  }
  return geometry;
}

TEST(Geometry, CountsOverAllRegionSets) {
  const Geometry geometry = three_region_sets();
  EXPECT_EQ(geometry.nsurface(), 5U);
  EXPECT_EQ(geometry.nvolume(), 3U);
  EXPECT_EQ(geometry.nmat(), 5U);
  EXPECT_EQ(Geometry().nsurface(), 0U);
  EXPECT_EQ(Geometry().nvolume(), 0U);
  EXPECT_EQ(Geometry().nmat(), 0U);
}

TEST(Geometry, FindsASurfaceAndItsRegionSet) {
  const Geometry geometry = three_region_sets();
  const struct { size_t region_set, position; } expected[] = {{0, 0}, {0, 1}, {0, 2}, {2, 0}, {2, 1}};
  for (unsigned long i = 0; i < 5; ++i) {
    int geo_index = -1;
    const auto surface = geometry.getSurfaceGeometry(i, geo_index);
    EXPECT_EQ(geo_index, static_cast<int>(expected[i].region_set)) << i;
    EXPECT_EQ(surface.get(), geometry.geos[expected[i].region_set].surfaces[expected[i].position].get()) << i;
  }
}

TEST(Geometry, FindsAVolumeAndItsRegionSet) {
  const Geometry geometry = three_region_sets();
  const struct { size_t region_set, position; } expected[] = {{0, 0}, {0, 1}, {1, 0}};
  for (unsigned long i = 0; i < 3; ++i) {
    int geo_index = -1;
    const auto volume = geometry.getVolumeGeometry(i, geo_index);
    EXPECT_EQ(geo_index, static_cast<int>(expected[i].region_set)) << i;
    EXPECT_EQ(volume.get(), geometry.geos[expected[i].region_set].volumes[expected[i].position].get()) << i;
  }
}

TEST(Geometry, PastTheEndIsNothingAndTheRegionSetStays) {
  const Geometry geometry = three_region_sets();
  int geo_index = 77;
  EXPECT_FALSE(geometry.getSurfaceGeometry(5, geo_index));
  EXPECT_FALSE(geometry.getVolumeGeometry(3, geo_index));
  EXPECT_FALSE(geometry.getSurfaceGeometry(static_cast<unsigned long>(-1), geo_index));
  EXPECT_FALSE(Geometry().getVolumeGeometry(0, geo_index));
  EXPECT_EQ(geo_index, 77);
}

TEST(Geometry, CountsAndLookupsFollowEveryChange) {
  Geometry geometry = three_region_sets();
  int geo_index = -1;
  EXPECT_EQ(geometry.nsurface(), 5U);
  EXPECT_EQ(geometry.nvolume(), 3U);
  geometry.geos[1].surfaces.swap(geometry.geos[2].surfaces);
  EXPECT_EQ(geometry.getSurfaceGeometry(3, geo_index).get(), geometry.geos[1].surfaces[0].get());
  EXPECT_EQ(geo_index, 1);
  geometry.geos[0].volumes.clear();
  EXPECT_EQ(geometry.nvolume(), 1U);
  EXPECT_EQ(geometry.getVolumeGeometry(0, geo_index).get(), geometry.geos[1].volumes[0].get());
  geometry.geos.erase(geometry.geos.begin());
  geometry.geos[0].surfaces.pop_back();
  EXPECT_EQ(geometry.nsurface(), 1U);
  EXPECT_FALSE(geometry.getSurfaceGeometry(1, geo_index));
}

TEST(Geometry, HandsOutAShare) {
  Geometry geometry = three_region_sets();
  int geo_index = -1;
  const auto surface = geometry.getSurfaceGeometry(0, geo_index);
  geometry.geos.clear();
  surface->nface = 5;
  EXPECT_EQ(surface->nface, 5);
}

TEST(RegionSetGeometry, CopySharesItsObjects) {
  FLDGEO original;
  original.surfaces.emplace_back(make_smart<SurfaceGeometry>());
  original.elements = make_smart<Elements>();
  original.materials = {1, 2};
  FLDGEO copy = original;
  EXPECT_EQ(copy.surfaces[0].get(), original.surfaces[0].get());
  EXPECT_EQ(copy.elements.get(), original.elements.get());
  copy.materials.push_back(3);
  copy.surfaces.clear();
  EXPECT_EQ(original.materials, (std::vector<int>{1, 2}));
  EXPECT_EQ(original.surfaces.size(), 1U);
}

TEST(RegionSetGeometry, IsEmptyAndCartesianAtFirst) {
  const FLDGEO geo;
  EXPECT_EQ(geo.node_count(), 0);
  EXPECT_EQ(geo.element_count(), 0);
  EXPECT_EQ(geo.material_count(), 0);
  EXPECT_EQ(geo.coordinateSystem, 0);
}

}  // namespace
}  // namespace fld
