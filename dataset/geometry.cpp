#include "dataset/geometry.h"

#include <algorithm>

namespace fld {

namespace {

unsigned long last_of(const std::vector<unsigned long>& ends) {
  return ends.empty() ? 0 : ends.back();
}

template <class Entry>
void count(const std::vector<FLDGEO>& geos, std::vector<Entry> FLDGEO::*list,
           std::vector<unsigned long>& ends) {
  ends.resize(geos.size());
  unsigned long sum = 0;
  for (size_t g = 0; g < geos.size(); ++g) ends[g] = sum += (geos[g].*list).size();
}

template <class Entry>
Entry entry_at(const std::vector<FLDGEO>& geos, std::vector<Entry> FLDGEO::*list,
               const std::vector<unsigned long>& ends, unsigned long i, int& geoIndex) {
  const auto end = std::upper_bound(ends.begin(), ends.end(), i);
  if (end == ends.end()) return Entry();
  geoIndex = static_cast<int>(end - ends.begin());
  const auto& entries = geos[static_cast<size_t>(geoIndex)].*list;
  return entries[i - (*end - entries.size())];
}

}  // namespace

const Geometry::Ends& Geometry::ends() const {
  if (!is_counted_ || ends_.volumes.size() != geos.size()) {
    count(geos, &FLDGEO::surfaces, ends_.surfaces);
    count(geos, &FLDGEO::volumes, ends_.volumes);
    is_counted_ = true;
  }
  return ends_;
}

unsigned long Geometry::nsurface() const {
  return last_of(ends().surfaces);
}
unsigned long Geometry::nvolume() const {
  return last_of(ends().volumes);
}
unsigned long Geometry::nmat() const {
  unsigned long sum = 0;
  for (const FLDGEO& geo : geos) sum += geo.materials.size();
  return sum;
}

smart_ptr<SurfaceGeometry> Geometry::getSurfaceGeometry(unsigned long i, int& geoIndex) const {
  return entry_at(geos, &FLDGEO::surfaces, ends().surfaces, i, geoIndex);
}

smart_ptr<VolumeGeometry> Geometry::getVolumeGeometry(unsigned long i, int& geoIndex) const {
  return entry_at(geos, &FLDGEO::volumes, ends().volumes, i, geoIndex);
}

}  // namespace fld
