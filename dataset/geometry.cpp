#include "dataset/geometry.h"

namespace fld {

namespace {

template <class Entry>
unsigned long count(const std::vector<FLDGEO>& geos, std::vector<Entry> FLDGEO::*list) {
  unsigned long sum = 0;
  for (const FLDGEO& geo : geos) sum += (geo.*list).size();
  return sum;
}

template <class Entry>
Entry entry_at(const std::vector<FLDGEO>& geos, std::vector<Entry> FLDGEO::*list, unsigned long i,
               int& geoIndex) {
  for (size_t g = 0; g < geos.size(); ++g) {
    const std::vector<Entry>& entries = geos[g].*list;
    if (i < entries.size()) {
      geoIndex = static_cast<int>(g);
      return entries[i];
    }
    i -= entries.size();
  }
  return Entry();
}

}  // namespace

unsigned long Geometry::nsurface() const {
  return count(geos, &FLDGEO::surfaces);
}
unsigned long Geometry::nvolume() const {
  return count(geos, &FLDGEO::volumes);
}
unsigned long Geometry::nmat() const {
  return count(geos, &FLDGEO::materials);
}

smart_ptr<SurfaceGeometry> Geometry::getSurfaceGeometry(unsigned long i, int& geoIndex) const {
  return entry_at(geos, &FLDGEO::surfaces, i, geoIndex);
}

smart_ptr<VolumeGeometry> Geometry::getVolumeGeometry(unsigned long i, int& geoIndex) const {
  return entry_at(geos, &FLDGEO::volumes, i, geoIndex);
}

}  // namespace fld
