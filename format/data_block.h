// Data blocks: a rule record followed by data records. The elements of an array are stored in record order;
// every record but the last is full.
//
// The element count comes from the caller, not from the file. One empty record may follow the last element;
// further records are an FLDReadException, and so is an end rule in place of a block with elements. If the
// rule announces fewer elements than the count, the rest of the caller's `out` is not changed (widened
// elements of FLDV4_I_INT64array become 0), but functions that allocate an array throw FLDReadException, so
// that arrays never take more memory than the file.
#pragma once

#include <stdio.h>
#include <string>

#include "format/array_layout.h"
#include "support/tracked_array.h"
#include "support/vfpa.h"

namespace fld {

// `n` int32 values. The rule's width is ignored.
void FLDV4_I_INTarray(FILE* stream, long n, int* out);

// `n` integers of 4 bytes (sign-extended) if the rule's width is 4, otherwise of 8 bytes.
void FLDV4_I_INT64array(FILE* stream, long n, long* out);

// One float of 4 or 8 bytes, as double. Throws FLDReadException "THIS FLD FILE HAS AN INVALID DATA TYPE." for
// other widths.
double FLDV4_I_FPREC(FILE* stream);

// `n` floats in the block's width (4 or 8, else throws as above), in a new tracked array that the caller
// frees. `out` is set before the values are read, so that its owner frees the array if reading fails.
void FLDV4_I_FPRECaloc_array(FILE* stream, int n, VFPA* out);

// At most `n` characters of one character block; the rest is skipped. Sets `is_plain` if the block is exactly
// the one record that its rule announces, in which case skipping the block ends at the same offset.
std::string read_text(FILE* stream, int n, bool* is_plain = nullptr);

// One character block that holds a blank-padded field of `n` characters; trailing blanks are removed.
std::string read_field(FILE* stream, int n);

// One character block into `out` (at least n + 1 bytes): at most `n` characters, then NULs up to and
// including index n. Further characters are skipped.
void FLDV4_I_CHARarray(FILE* stream, int n, char* out);

// One character block of `n` characters, truncated to 80, NUL-terminated. `out` has at least 81 bytes.
void FLDV4_I_CHARarray80(FILE* stream, int n, char* out);

// A block of one int32 value; `missing` if the block has no records.
int read_int(FILE* stream, int missing = 0);

// A new tracked array of `n` int32 values.
TrackedArray<int> read_int_array(FILE* stream, long n, int tag);

// The two ways to handle the arrays of a section: read them into memory, or note their location and skip
// them. Both make the same checks. Skipping takes constant time.
void take_ints(FILE* stream, long n, int tag, int*& values);
void take_ints(FILE* stream, long n, int tag, ArrayLayout& place);
void take_floats(FILE* stream, int n, VFPA& values);
void take_floats(FILE* stream, int n, ArrayLayout& place);

}  // namespace fld
