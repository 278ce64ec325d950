// The tracked allocator. It lists every array of the format readers with the tag of its call site, so that
// leaks can be reported and freed when the host shuts the reader down.
//
// Freeing and resizing are O(1) in the number of live blocks. Not thread-safe, like the rest of the reader.
#pragma once

#include <stddef.h>

namespace fld {

// One listed block. The list runs from the newest allocation to the oldest.
struct AllocationNode;

// Head of the list of the current dataset's blocks; null when there are none.
extern AllocationNode* memory;

// Starts a new list. Blocks of the previous list remain valid for cv_mfree and cv_realoc, but are no longer
// reported as leaks.
void set_memory();

// Writes "MEMORY LEAK DETECTED <tag>" to stderr for every block of the current list, newest first, and frees
// it.
void free_memory();

// A new uninitialised block of `size` bytes; null for size 0. Throws MemoryAllocException "NOT ENOUGH
// MEMORY".
void* cv_maloc(size_t size, int tag);

// A new zero-filled block of `count` * `size` bytes; null when either is 0. Throws like cv_maloc.
void* cv_caloc(size_t count, size_t size, int tag);

// The same for a block that may never be filled: its pages take no memory until they are written to.
void* cv_reserve(size_t count, size_t size, int tag);

// Resizes a listed block, which keeps its position and tag. Returns null for a null pointer. On failure,
// returns null and stores null in the list entry, so the old block is no longer listed. Throws
// MemoryAllocException "ATTEMPT TO REALLOC UNKNOWN POINTER".
void* cv_realoc(void* block, size_t size);

// Frees a listed block; does nothing for null. An unknown pointer or a double free ends the process.
void cv_mfree(void* block);

}  // namespace fld
