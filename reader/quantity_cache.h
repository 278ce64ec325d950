// The cache of the last scalar and the last vector, for requests from several parts.
#pragma once

#include "dataset/fld_file.h"

namespace fld {

// Loads the quantity `title` of `file` into g_scalar (g_vector), with undefined values replaced by
// Ens_Undef_value. The cache key is the name alone: a cached quantity of the same name is kept, whatever
// region set it came from. Returns 1, or writes a message and returns -1 if the file cannot be opened or the
// section is not at its indexed offset. On failure, including exceptions, the cache does not change.
int cache_scalar(const FLDFile& file, const FLDTITLE_Scalar& title);
int cache_vector(const FLDFile& file, const FLDTITLE_Vector& title);

}  // namespace fld
