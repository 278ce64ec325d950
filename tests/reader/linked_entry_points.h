// The entry points of a program linked with the reader's modules, in the table for loaded readers.
#pragma once

#include "host/entry_points.h"

namespace reader_test {

const host::EntryPoints& linked_entry_points();

}  // namespace reader_test
