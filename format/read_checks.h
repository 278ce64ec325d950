// Checks of what an FLD file says against what it holds: the end of the file and read errors are found where
// they happen, and counts are compared with the rest of the file before anything is allocated for them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <stdio.h>

namespace fld {

// Reads `n` elements of `width` bytes into `out` in the host's byte order. Throws FLDReadException
// "UNEXPECTED END OF FILE AT BYTE <offset>." or "READ ERROR AT BYTE <offset>.".
void read_elements(FILE* stream, void* out, size_t width, size_t n);

// Throws FLDReadException unless `count` items of at least `bytes_each` bytes can stand in the rest of the
// file: "NEGATIVE COUNT <count> AT BYTE <offset>." or "COUNT <count> EXCEEDS THE REST OF THE FILE AT BYTE
// <offset>.".
// Up to 4096 bytes the file is not asked: what is allocated for them is harmless, and the reading finds the
// end.
void check_count(FILE* stream, int64_t count, size_t bytes_each);

// Puts the stream at `offset` of its file; throws as read_elements does.
void go_to(FILE* stream, int64_t offset);

// Steps over `length` bytes. Throws FLDReadException "NEGATIVE RECORD LENGTH <length> AT BYTE <offset>." or
// the errors of read_elements. A step past the end of the file is found by the next read.
void step_over(FILE* stream, int length);

}  // namespace fld
