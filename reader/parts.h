// The host's parts: every surface region, then every volume region, then the whole mesh of every region set.
#pragma once

#include "dataset/geometry.h"

namespace fld {

// A part. Shares ownership of its region.
struct Part {
  enum class Kind { none, surface, volume, whole };

  Kind kind = Kind::none;
  int number = 0;    // from 1
  int geoIndex = 0;  // its region set
  smart_ptr<SurfaceGeometry> surface;
  smart_ptr<VolumeGeometry> volume;

  FLDGEO& geo() const;
};

// Call when the regions of the current geometry change.
void forget_part_index();

// Part `number` of the current geometry; Kind::none if out of range.
Part find_part(int number);

// The number of parts of the current geometry.
int count_parts();

// The host's element-type slots: their number, and those that the reader uses.
constexpr int kElementSlots = 34;
constexpr int kSlotTriangle = 6;
constexpr int kSlotQuadrilateral = 10;
constexpr int kSlotTetrahedron = 14;
constexpr int kSlotPyramid = 18;
constexpr int kSlotPrism = 22;
constexpr int kSlotHexahedron = 26;

// The element code (face code) of a slot; 0 for unused slots.
int element_code_of_slot(int slot);
int face_code_of_slot(int slot);

}  // namespace fld
