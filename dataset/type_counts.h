// Counts elements and faces by type, and indices that are out of range.
#pragma once

#include <string>

#include "dataset/fldgeo.h"

namespace fld {

// Sets the counts of all surfaces, all volumes and the elements. Element indices out of range are not
// counted.
void count_types(FLDGEO& geo);

// Writes one line per kind of index that points outside its table to the standard error stream: nodes of
// elements, nodes of faces, elements of volumes, elements of faces; and when node lists are shorter than
// their types need. The types have to be counted before.
void report_bad_indices(const FLDGEO& geo, const std::string& path);

}  // namespace fld
