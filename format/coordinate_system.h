// The section "LS_CoordinateSystem".
#pragma once

#include <stdio.h>

namespace fld {

// Reads the section's body: int block of 1 (0 Cartesian, 1 cylindrical), end rule.
void FLDV4_CoordinateSystem(FILE* stream, int& value);

}  // namespace fld
