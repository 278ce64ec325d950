// Copies nodal values to the host in the order of the part's local node numbers.
#pragma once

#include "support/vfpa.h"

namespace fld {

// Writes the value of each of the `count` selected nodes, as float, to entries 1 to `count` of `out`. Nodes
// at or beyond `n`, the number of values that there are, get Ens_Undef_value.
void copy_part_values(int count, const VFPA& values, int n, float* out);

}  // namespace fld
