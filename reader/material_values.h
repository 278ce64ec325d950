// The variable "MatOfElements": the material number of each element of a part.
#pragma once

#include "reader/parts.h"

namespace fld {

// Writes the material number of each element of the part in the host's element-type slot, as float, from
// entry 1 of `out` on. A face takes that of its element. Where there is no element or no number:
// Ens_Undef_value.
void write_materials(const Part& part, int slot, float* out);

}  // namespace fld
