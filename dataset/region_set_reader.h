// Reading the sections of one region set of a file into its geometry.
#pragma once

#include <cstdint>
#include <stdio.h>

#include "dataset/fldgeo.h"
#include "dataset/region_set_layout.h"

namespace fld {

// Which sections with indices or material numbers were read.
struct LoadedSections {
  bool surfaces = false;
  bool volumes = false;
  bool elements = false;
  bool materials = false;
};

// Whether there is an opening title of a region set at offset `begin`. If so, leaves the stream after it.
bool is_region_set_at(FILE* stream, int64_t begin);

// Moves the stream from the end of the header to the end of the opening title of region set `region`. Tries
// offset `begin` first; if the file has changed, walks it from the header. Throws FLDReadException.
void find_region_set(FILE* stream, int64_t begin, int region);

// Reads the sections of a region set into `geo`, from the end of its opening title. A later section of the
// same kind replaces an earlier one. `loaded` is valid even if an exception is thrown. Throws FLDException.
void read_region_set(FILE* stream, FLDGEO& geo, LoadedSections& loaded);

// The same walk, but skips the arrays and notes their locations.
void locate_region_set(FILE* stream, RegionSetLayout& layout);

}  // namespace fld
