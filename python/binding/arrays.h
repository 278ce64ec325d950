// Coordinates, elements and values as NumPy arrays, which own their memory.
#pragma once

#include <pybind11/numpy.h>

#include "python/binding/dataset.h"

namespace binding {

// (n, 3) float32, in the order of the nodes.
pybind11::array points(Dataset& dataset, int step, int part);

// By shape, (m, k) int32 each: the nodes of the elements, from 0.
pybind11::dict cells(Dataset& dataset, int step, int part);

// float32, (n,) or, for a vector without a component, (n, 3): one per node, or per element in the order of
// the shapes of cells(). NaN where a value is undefined. `with_mask` makes a tuple of it with a bool array of
// the same shape, true where a value is undefined. None when the step has no such values.
pybind11::object values(Dataset& dataset, int step, int part, int variable, std::optional<int> component,
                        bool with_mask);

// The box around the nodes: (2, 3) float32, the lowest and the highest corner; None without nodes.
pybind11::object bounds(Dataset& dataset, int step, int part);

}  // namespace binding
