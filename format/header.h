// The header of an FLD file: titled items between the version record and the title "HeaderDataEnd".
#pragma once

#include <stdio.h>

namespace fld {

// Reads the header items, in any order, up to and including "HeaderDataEnd". Outputs of missing items are not
// changed. Returns 0.
//
// `dimension`: 2 or 3. `cycle`: the solver's step. `time`: its solution time. `unusedFloat`, `unusedDouble`:
// the writer's marker for undefined values. `bias`: index of the first node and element.
int FLDV4_I_HeadB(FILE* stream, int* dimension, int* cycle, double* time, float* unusedFloat,
                  double* unusedDouble, int* bias);

}  // namespace fld
