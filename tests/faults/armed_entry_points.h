// The entry points of a program linked with the reader's modules, with fault injection: the plans for failing
// memory and failing files are active only during a call.
#pragma once

#include "host/entry_points.h"

namespace faults {

const host::EntryPoints& armed_entry_points();

}  // namespace faults
