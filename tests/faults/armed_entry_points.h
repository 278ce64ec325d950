// The entry points of a program that is linked with the reader's modules, around which what can fail does
// count: the plans of failing memory and failing files run only inside of a call.
#pragma once

#include "host/entry_points.h"

namespace faults {

const host::EntryPoints& armed_entry_points();

}  // namespace faults
