#include "reader/parts.h"

#include "format/element_codes.h"
#include "reader/globals.h"

namespace fld {

FLDGEO& Part::geo() const {
  return g_fldgeo->geos[static_cast<size_t>(geoIndex)];
}

Part find_part(int number) {
  Part part;
  if (!g_fldgeo || number < 1) return part;
  part.number = number;
  auto index = static_cast<unsigned long>(number) - 1;
  part.surface = g_fldgeo->getSurfaceGeometry(index, part.geoIndex);
  if (part.surface) {
    part.kind = Part::Kind::surface;
    return part;
  }
  index -= g_fldgeo->nsurface();
  part.volume = g_fldgeo->getVolumeGeometry(index, part.geoIndex);
  if (part.volume) {
    part.kind = Part::Kind::volume;
    return part;
  }
  index -= g_fldgeo->nvolume();
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
