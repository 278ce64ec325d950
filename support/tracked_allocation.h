// The tracked allocator: every array of the format readers is listed with the tag of its call site, so that
// what was not freed can be reported and released when the host shuts the reader down.
//
// Freeing and resizing take the same time however many blocks are alive. Single-threaded, like the whole
// reader.
#pragma once

#include <stddef.h>

namespace fld {

// One listed block. Nodes run from the newest allocation to the oldest.
struct AllocationNode;

// Head of the list of the current dataset's blocks; null when there are none.
extern AllocationNode* memory;

// Starts a new list. Blocks of the list before it stay known to cv_mfree and cv_realoc until their owners
// release them, but no longer count as leaks.
void set_memory();

// Writes "MEMORY LEAK DETECTED <tag>" to the standard error stream for every block of the current list,
// newest first, and frees it.
void free_memory();

// A new uninitialised block of `size` bytes; null for size 0. Throws MemoryAllocException "NOT ENOUGH
// MEMORY".
void* cv_maloc(size_t size, int tag);

// A new zero-filled block of `count` * `size` bytes; null when either is 0. Throws like cv_maloc.
void* cv_caloc(size_t count, size_t size, int tag);

// Resizes a listed block, which keeps its place and tag; null for a null pointer. A failed resizing returns
// null and leaves null in the list, so the old block is known no longer. Throws MemoryAllocException "ATTEMPT
// TO REALLOC UNKNOWN POINTER".
void* cv_realoc(void* block, size_t size);

// Frees a listed block; nothing for null. A pointer that was never allocated or was freed before ends the
// process.
void cv_mfree(void* block);

}  // namespace fld
