// Numbering: brings the indices of a geometry to zero-based numbering and its material numbers to positive
// ones.
#pragma once

#include "dataset/region_set_reader.h"

namespace fld {

// Subtracts `bias` from every node and element index of the pieces that `loaded` names; a face link of -1
// stays. Notes the range of the elements' nodes.
void modifyIndicies(FLDGEO& geo, int bias, const LoadedSections& loaded);

// When some material number is negative, shifts all of them so that the smallest becomes 1. Throws
// FLDReadException when a number then lies outside 0 to 9999.
void modifyMAT(const smart_ptr<MatOfElements>& materials);

// The distinct material numbers, ascending; none without materials.
std::vector<int> distinct_materials(const MatOfElements* materials);

}  // namespace fld
