// Checked reads: end of file and read errors are detected where they happen, and counts are compared with the
// rest of the file before anything is allocated for them.
#pragma once

#include <cstddef>
#include <cstdint>
#include <stdio.h>

namespace fld {

// Reads `n` elements of `width` bytes into `out` in the host's byte order. Throws FLDReadException
// "UNEXPECTED END OF FILE AT BYTE <offset>." or "READ ERROR AT BYTE <offset>.".
void read_elements(FILE* stream, void* out, size_t width, size_t n);

// Throws FLDReadException unless the rest of the file can hold `count` items of at least `bytes_each` bytes:
// "NEGATIVE COUNT <count> AT BYTE <offset>." or "COUNT <count> EXCEEDS THE REST OF THE FILE AT BYTE
// <offset>.". Totals up to 4096 bytes are accepted without an fstat; the read itself detects the end of the
// file.
void check_count(FILE* stream, int64_t count, size_t bytes_each);

// Seeks to `offset`. Throws as read_elements does.
void go_to(FILE* stream, int64_t offset);

// Skips `length` bytes. Throws FLDReadException "NEGATIVE RECORD LENGTH <length> AT BYTE <offset>." or as
// read_elements does. A skip past the end of the file is detected by the next read.
void step_over(FILE* stream, int length);

}  // namespace fld
