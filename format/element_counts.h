// Number of elements of each type.
#pragma once

#include "format/element_codes.h"

namespace fld {

// Set when the geometry is assembled. Unknown codes are not counted.
struct ElementCounts {
  int ntri = 0;
  int nquad = 0;
  int ntet = 0;
  int npyr = 0;
  int nprism = 0;
  int nhex = 0;

  // Length of the connectivity of these elements.
  long nodes() const { return 3L * ntri + 4L * nquad + 4L * ntet + 5L * npyr + 6L * nprism + 8L * nhex; }

  // Branch-free, so that a loop over a list of codes is vectorised.
  void add(int code) {
    ntri += code == kTriangle;
    nquad += code == kQuadrilateral;
    ntet += code == kTetrahedron;
    npyr += code == kPyramid;
    nprism += code == kPrism;
    nhex += code == kHexahedron;
  }

  ElementCounts& operator+=(const ElementCounts& other) {
    ntri += other.ntri;
    nquad += other.nquad;
    ntet += other.ntet;
    npyr += other.npyr;
    nprism += other.nprism;
    nhex += other.nhex;
    return *this;
  }
};

}  // namespace fld
