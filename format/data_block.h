// Data blocks: a rule record and the data records that it announces. The elements of an array are spread over
// the records in order; all records but the last are full.
//
// The element count comes from the caller, not from the file. A rule that announces more records than the
// count needs is an FLDReadException. With fewer, elements that the file does not give keep what the caller's
// `out` held (the widened ones of FLDV4_I_INT64array become 0); where a new array would be made for them it
// is an FLDReadException, so that arrays never take more memory than the file.
#pragma once

#include <stdio.h>
#include <string>

#include "support/tracked_array.h"
#include "support/vfpa.h"

namespace fld {

// `n` int32 values; the rule's width is not looked at.
void FLDV4_I_INTarray(FILE* stream, long n, int* out);

// `n` integers of 4 bytes (widened with their sign) or, for any other width of the rule, 8 bytes.
void FLDV4_I_INT64array(FILE* stream, long n, long* out);

// One float of 4 or 8 bytes, as double. Another width: FLDReadException "THIS FLD FILE HAS AN INVALID DATA
// TYPE.".
double FLDV4_I_FPREC(FILE* stream);

// `n` floats in the block's own width (4 or 8, else as above), in a new tracked array that the caller frees.
// `out` holds it before the values are read, so that an owner of `out` frees it when reading fails.
void FLDV4_I_FPRECaloc_array(FILE* stream, int n, VFPA* out);

// The characters of one character block, the first `n` at most; what is beyond them is read and dropped.
// `is_plain` becomes whether the block is the one record that its rule says, so that stepping over it ends at
// the same place.
std::string read_text(FILE* stream, int n, bool* is_plain = nullptr);

// One character block that is a blank-padded field of `n` characters: its text, without the blanks at the
// end.
std::string read_field(FILE* stream, int n);

// One character block into `out` (at least n + 1 bytes): at most `n` characters, NULs up to and including
// index n. Characters beyond that are read and dropped.
void FLDV4_I_CHARarray(FILE* stream, int n, char* out);

// One character block of `n` characters, cut to 80: `out` (at least 81 bytes) ends with NUL at index 80 at
// the latest.
void FLDV4_I_CHARarray80(FILE* stream, int n, char* out);

// A block of one int32 value; `missing` when the block has no records.
int read_int(FILE* stream, int missing = 0);

// A new tracked array of `n` int32 values.
TrackedArray<int> read_int_array(FILE* stream, long n, int tag);

}  // namespace fld
