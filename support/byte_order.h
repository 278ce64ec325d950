// Byte order and raw reads. FLD files are big-endian. Every read of the format layer goes through cnvt_fread,
// which swaps the elements to the host's byte order; only large arrays are read in blocks and go through
// cnvt_copy.
#pragma once

#include <stddef.h>
#include <stdio.h>

namespace fld {

// Byte order of the files being read (0: big-endian) and of files being written (1: little-endian).
int get_endian_read();
int get_endian_write();

// Reads `n` elements of `size` bytes into `buffer` with the calling convention of fread. Elements wider than
// one byte are read through a static 256-byte staging buffer, in chunks of at most 256 bytes, and
// byte-swapped. Never reads more bytes than requested. After a short read, the rest of `buffer` is filled
// from the staging buffer without further reads. The result is fread's item count if nothing is swapped,
// otherwise a position in the staging buffer: check the stream's state instead. Not reentrant.
size_t cnvt_fread(void* buffer, size_t size, size_t n, FILE* stream);

// Copies `n` elements of `size` bytes (4 or 8), as they stand in a file, in the host's byte order.
void cnvt_copy(void* out, const void* in, size_t size, size_t n);

// Replaces trailing blanks of the `n`-character field `s` (n at least 1) with NULs.
void cnvt_trimright(char* s, int n);

}  // namespace fld
