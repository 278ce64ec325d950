// The last scalar and the last vector read from a file, for the next part that asks for them.
#pragma once

#include "dataset/fld_file.h"

namespace fld {

// Makes g_scalar (g_vector) hold the quantity of `title` in `file`, with undefined values replaced by
// Ens_Undef_value. The key is the name alone: a quantity of that name that is held already is kept, whatever
// region set it came from. Returns 1, or writes a message and returns -1 when the file cannot be opened or
// the section is not where the index says. After any failure, an exception included, the quantity held before
// and its name are still there.
int cache_scalar(const FLDFile& file, const FLDTITLE_Scalar& title);
int cache_vector(const FLDFile& file, const FLDTITLE_Vector& title);

}  // namespace fld
