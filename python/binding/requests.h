// Requests for a variable's values.
#pragma once

#include <optional>

#include "host/dataset.h"
#include "python/binding/dataset.h"

namespace binding {

// The number of components that a variable has.
int components_of(Dataset& dataset, int variable);

// One component on a part; none where the step has no values of the variable, or the reader offers none.
std::optional<host::HostArray> ask_values(Dataset& dataset, int step, int part, int variable, int component);

}  // namespace binding
