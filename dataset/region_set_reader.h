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

// Whether the opening title of a region set stands at `begin`; the stream is behind it then.
bool is_region_set_at(FILE* stream, int64_t begin);

// Brings the stream, which stands behind the header, behind the opening title of region set `region`. It is
// looked for at `begin` first; a file that has changed since it was indexed there is walked from the header
// on. Throws FLDReadException.
void find_region_set(FILE* stream, int64_t begin, int region);

// Walks the sections of a region set, from behind its opening title to its end, and puts what it reads into
// `geo`, a section of a kind that was met before replacing the earlier one. `loaded` follows what was
// replaced, so that it is right when the walk ends with an exception. Throws FLDException.
void read_region_set(FILE* stream, FLDGEO& geo, LoadedSections& loaded);

}  // namespace fld
