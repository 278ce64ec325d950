// How many elements of each type a list holds.
#pragma once

#include "format/element_codes.h"

namespace fld {

// Counted when the geometry is assembled; codes that name no shape count nowhere.
struct ElementCounts {
  int ntri = 0;
  int nquad = 0;
  int ntet = 0;
  int npyr = 0;
  int nprism = 0;
  int nhex = 0;

  // Node indices that so many elements take in a connectivity.
  long nodes() const { return 3L * ntri + 4L * nquad + 4L * ntet + 5L * npyr + 6L * nprism + 8L * nhex; }

  // Without a branch per type, so that a loop over a list of codes compiles to vector code.
  void add(int code) {
    ntri += code == kTriangle;
    nquad += code == kQuadrilateral;
    ntet += code == kTetrahedron;
    npyr += code == kPyramid;
    nprism += code == kPrism;
    nhex += code == kHexahedron;
  }
};

}  // namespace fld
