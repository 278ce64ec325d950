// What a dataset has, as plain Python objects.
#pragma once

#include <pybind11/pybind11.h>

#include "python/binding/dataset.h"

namespace binding {

// The reader's own words about itself: name, release, version of the interface.
pybind11::dict reader_identity(Dataset& dataset);

// Of every step: its time in s, and the geometry that belongs to it, from 0.
pybind11::list times(Dataset& dataset);
pybind11::list geometry_steps(Dataset& dataset);
// The file of each step; an empty list where they are not all known.
pybind11::list files(Dataset& dataset);

// A tuple per part of the step: (number, name in the file, name that no other part has, kind, region set or
// None, nodes, {shape: elements}).
pybind11::list parts(Dataset& dataset, int step);
// A tuple per variable that has values: (number, name, label, unit, kind, location). Every name is there
// once.
pybind11::list variables(Dataset& dataset);
// The reader's groups: (name, [names of parts in the file]).
pybind11::list groups(Dataset& dataset);
// The hierarchy of the step's parts with these numbers: [(name, [numbers], [folders like these])].
pybind11::list part_tree(Dataset& dataset, int step, const std::vector<int>& chosen);

// What the reader wrote to the standard error stream so far.
pybind11::str diagnostics(Dataset& dataset);

}  // namespace binding
