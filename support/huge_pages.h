// Requests transparent huge pages for large arrays: faulting in 4 KiB pages takes as long as reading the data
// into them.
#pragma once

#include <stddef.h>

namespace fld {

// For a block of `size` bytes that is about to be filled. Advisory; affects only performance.
void advise_huge_pages(void* block, size_t size);

}  // namespace fld
