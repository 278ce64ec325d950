// Transparent huge pages for large arrays: faulting in 4 KiB pages takes as long as reading the data into
// them. On some virtual machines the opposite holds: a huge page that the machine has given back to its own
// host takes longer to get again than the small pages in its place. So pages are taken one at a time by
// each thread, while they come fast.
#pragma once

#include <stddef.h>

namespace fld {

// Takes huge pages for a block of `size` bytes that is about to be filled, and keeps its contents. Does
// nothing to small blocks. Affects only performance.
void take_huge_pages(void* block, size_t size);

}  // namespace fld
