// The geometry of one region set.
#pragma once

#include <vector>

#include "format/elements.h"
#include "format/mat_of_elements.h"
#include "format/nodes.h"
#include "format/surface_geometry.h"
#include "format/volume_geometry.h"
#include "support/smart_ptr.h"

namespace fld {

// A value type whose copies share the objects. After FLDFile::readGeometry all indices are zero-based. If a
// section is missing, its pointer is null, which means empty.
//
// Indices from the file may be out of range. Every user ignores such entries.
struct FLDGEO {
  std::vector<smart_ptr<SurfaceGeometry>> surfaces;  // in file order
  std::vector<smart_ptr<VolumeGeometry>> volumes;    // in file order
  smart_ptr<Elements> elements;
  smart_ptr<MatOfElements> matOfElements;
  smart_ptr<Nodes> nodes;
  std::vector<int> materials;  // the distinct material numbers of matOfElements, ascending
  int coordinateSystem = 0;    // 0 Cartesian, 1 cylindrical (radius, angle in radians, z)

  int node_count() const { return nodes ? nodes->nnode : 0; }
  int element_count() const { return elements ? elements->nelem : 0; }
  // Whether every element's nodes are complete and in range.
  bool has_sound_elements() const {
    return elements && elements->conn_range.is_inside(node_count()) && elements->nodes() <= elements->nconn;
  }
  int material_count() const { return matOfElements ? matOfElements->nelem : 0; }
};

}  // namespace fld
