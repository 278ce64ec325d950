// Byte order and raw reads: FLD files are big-endian whatever machine wrote them, and every read of the
// format readers goes through cnvt_fread, which hands back elements in the host's order.
#pragma once

#include <stddef.h>
#include <stdio.h>

namespace fld {

// Byte order of the files being read (0: big-endian) and of files being written (1: little-endian).
int get_endian_read();
int get_endian_write();

// Reads `n` elements of `size` bytes into `buffer` with the calling convention of fread. Elements wider than
// a byte are staged through one static 256-byte buffer in chunks of at most 256 bytes, never beyond the bytes
// asked for, and their bytes reversed. After a short read the rest of `buffer` is filled from what the
// staging buffer holds, without further reads. The result is fread's item count on the plain path and a
// position in the staging buffer on the swapping one: callers look at the stream's state instead. Not
// re-entrant.
size_t cnvt_fread(void* buffer, size_t size, size_t n, FILE* stream);

// Replaces the blanks at the end of the `n`-character field `s` (n at least 1) by NUL.
void cnvt_trimright(char* s, int n);

}  // namespace fld
