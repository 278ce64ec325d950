// The variable "MatOfElements": the material number of each element of a part.
#pragma once

#include "reader/parts.h"

namespace fld {

// Writes the material number of each element of the part in this element-type slot, as float, to entry 1 and
// following of `out`. A face gets the number of its element. Missing numbers are Ens_Undef_value.
void write_materials(const Part& part, int slot, float* out);

}  // namespace fld
