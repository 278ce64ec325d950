// Values of a part in the host's arrays, which start at entry 1.
#pragma once

#include "reader/node_selection.h"
#include "support/vfpa.h"

namespace fld {

// Writes one value per node of the part, as float, in the order of the part's local node numbers. `n` is the
// number of values; nodes beyond them get Ens_Undef_value.
void copy_part_values(const PartNodes& part, const VFPA& values, int n, float* out);

// Writes the material number of each element of the part in this element-type slot, as float. A face gets the
// number of its element. Missing numbers are Ens_Undef_value.
void write_materials(const Part& part, int slot, float* out);

}  // namespace fld
