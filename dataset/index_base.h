// Zero-based indices and non-negative material numbers.
#pragma once

#include "dataset/region_set_reader.h"

namespace fld {

// Subtracts `bias` from every node and element index of the loaded sections, except face links of -1. Sets
// the index range of the connectivity.
void modifyIndicies(FLDGEO& geo, int bias, const LoadedSections& loaded);

// If any material number is negative, shifts all of them so that the smallest becomes 1. Throws
// FLDReadException if a number is then outside 0 to 9999.
void modifyMAT(const smart_ptr<MatOfElements>& materials);

// The distinct material numbers, ascending; empty for null.
std::vector<int> distinct_materials(const MatOfElements* materials);

}  // namespace fld
