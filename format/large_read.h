// Reads large arrays by several threads.
#pragma once

#include <stdio.h>

#include "format/array_layout.h"

namespace fld {

// Reads all elements of `array` into `out` in the host's byte order, with `threads` threads, and leaves the
// stream after the last element. Returns false, with the stream as it was, if the array cannot be read from
// end to end: then the caller reads it alone and reports what is wrong. Elements have 4 or 8 bytes.
bool read_by_threads(FILE* stream, const ArrayLayout& array, int threads, void* out);

}  // namespace fld
