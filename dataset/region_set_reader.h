// Reading the sections of one region set of a file into its geometry.
#pragma once

#include <cstdint>
#include <stdio.h>

#include "dataset/fldgeo.h"

namespace fld {

// Which pieces with indices or material numbers a file has given.
struct LoadedSections {
  bool surfaces = false;
  bool volumes = false;
  bool elements = false;
  bool materials = false;
};

// Walks the sections of the region set whose opening title stands at `begin`, to its end, and puts what it
// reads into `geo`, a section of a kind that was met before replacing the earlier one. `loaded` follows what
// was replaced, so that it is right when the walk ends with an exception. Throws FLDException.
void read_region_set(FILE* stream, int64_t begin, FLDGEO& geo, LoadedSections& loaded);

}  // namespace fld
