// The entry points of a program that is linked with the reader's modules, in the table that programs use for
// a loaded reader.
#pragma once

#include "host/entry_points.h"

namespace reader_test {

const host::EntryPoints& linked_entry_points();

}  // namespace reader_test
