// Range, mean and counts of a variable's values.
#pragma once

#include <pybind11/pybind11.h>

#include "python/binding/dataset.h"

namespace binding {

// A tuple per component, and for a vector then one of its magnitude: (minimum, maximum, mean, numbers,
// undefined, not numbers). The first three are None where there is no number. None when the step has no such
// values.
pybind11::object statistics(Dataset& dataset, int step, int part, int variable);

}  // namespace binding
