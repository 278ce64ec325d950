// Asks the system for large pages under large arrays: clearing and mapping small pages costs as much as
// reading the data that goes into them.
#pragma once

#include <stddef.h>

namespace fld {

// For a block of `size` bytes that is written soon, from end to end. A wish about this block alone; whether
// it is granted shows in nothing but time.
void advise_large_pages(void* block, size_t size);

}  // namespace fld
