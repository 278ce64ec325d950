#include "reader/parts.h"

#include <algorithm>
#include <new>
#include <vector>

#include "format/element_codes.h"
#include "reader/globals.h"

namespace fld {

namespace {

using Ends = std::vector<unsigned long>;

// Per region set, the number of surfaces (volumes) in it and in those before it. With it, finding a part
// takes logarithmic time: a file may have very many region sets.
struct PartIndex {
  bool is_made = false;
  Ends surfaces;
  Ends volumes;
};
PartIndex part_index;

template <class Entry>
Ends ends_of(std::vector<Entry> FLDGEO::*list) {
  Ends ends;
  ends.reserve(g_fldgeo->geos.size());
  unsigned long sum = 0;
  for (const FLDGEO& geo : g_fldgeo->geos) ends.push_back(sum += (geo.*list).size());
  return ends;
}

// False if memory is exhausted: a request for a part must not fail because of the index.
bool make_part_index() {
  if (part_index.is_made) return true;
  try {
    part_index = {true, ends_of(&FLDGEO::surfaces), ends_of(&FLDGEO::volumes)};
  } catch (const std::bad_alloc&) {
    return false;
  }
  return true;
}

// Entry `index` of the concatenated lists of all region sets, or null with `index` less their length.
template <class Entry>
Entry find_entry(const Ends& ends, std::vector<Entry> FLDGEO::*list, unsigned long& index, int& geoIndex) {
  const auto end = std::upper_bound(ends.begin(), ends.end(), index);
  if (end == ends.end()) {
    index -= ends.empty() ? 0 : ends.back();
    return Entry();
  }
  geoIndex = static_cast<int>(end - ends.begin());
  const auto& entries = g_fldgeo->geos[static_cast<size_t>(geoIndex)].*list;
  return entries[index - (*end - entries.size())];
}

smart_ptr<SurfaceGeometry> find_surface(unsigned long& index, int& geoIndex) {
  if (make_part_index()) return find_entry(part_index.surfaces, &FLDGEO::surfaces, index, geoIndex);
  auto surface = g_fldgeo->getSurfaceGeometry(index, geoIndex);
  if (!surface) index -= g_fldgeo->nsurface();
  return surface;
}

smart_ptr<VolumeGeometry> find_volume(unsigned long& index, int& geoIndex) {
  if (make_part_index()) return find_entry(part_index.volumes, &FLDGEO::volumes, index, geoIndex);
  auto volume = g_fldgeo->getVolumeGeometry(index, geoIndex);
  if (!volume) index -= g_fldgeo->nvolume();
  return volume;
}

}  // namespace

void forget_part_index() {
  part_index = {};
}

FLDGEO& Part::geo() const {
  return g_fldgeo->geos[static_cast<size_t>(geoIndex)];
}

Part find_part(int number) {
  Part part;
  if (!g_fldgeo || number < 1) return part;
  part.number = number;
  auto index = static_cast<unsigned long>(number) - 1;
  part.surface = find_surface(index, part.geoIndex);
  if (part.surface) {
    part.kind = Part::Kind::surface;
    return part;
  }
  part.volume = find_volume(index, part.geoIndex);
  if (part.volume) {
    part.kind = Part::Kind::volume;
    return part;
  }
  if (index < g_fldgeo->geos.size()) {
    part.kind = Part::Kind::whole;
    part.geoIndex = static_cast<int>(index);
  }
  return part;
}

int count_parts() {
  if (!g_fldgeo) return 0;
  return static_cast<int>(g_fldgeo->nsurface() + g_fldgeo->nvolume() + g_fldgeo->geos.size());
}

int element_code_of_slot(int slot) {
  switch (slot) {
    case kSlotTriangle:
      return kTriangle;
    case kSlotQuadrilateral:
      return kQuadrilateral;
    case kSlotTetrahedron:
      return kTetrahedron;
    case kSlotPyramid:
      return kPyramid;
    case kSlotPrism:
      return kPrism;
    case kSlotHexahedron:
      return kHexahedron;
    default:
      return 0;
  }
}

int face_code_of_slot(int slot) {
  switch (slot) {
    case kSlotTriangle:
      return kTriangleFace;
    case kSlotQuadrilateral:
      return kQuadrilateralFace;
    default:
      return 0;
  }
}

}  // namespace fld
