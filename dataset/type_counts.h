// Counts elements and faces by type, and indices that are out of range.
#pragma once

#include <string>

#include "dataset/fldgeo.h"

namespace fld {

// Sets the counts of all surfaces, all volumes and the elements. Element indices out of range are not
// counted.
void count_types(FLDGEO& geo);

// Numbers of indices that are out of range, and of indices that are missing because a node list is shorter
// than its types need.
struct BadIndices {
  BadIndices& operator+=(const BadIndices& other);

  long element_nodes = 0;  // node indices of elements
  long missing_element_nodes = 0;
  long face_nodes = 0;  // node indices of faces
  long missing_face_nodes = 0;
  long face_elements = 0;    // element indices of faces
  long volume_elements = 0;  // element indices of volumes
};

// Counts those of one region set. Call after count_types.
BadIndices count_bad_indices(const FLDGEO& geo);

// Writes one line to stderr for each kind that occurs.
void report_bad_indices(const BadIndices& bad, const std::string& path);

}  // namespace fld
