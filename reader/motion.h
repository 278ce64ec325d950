// Applies the motion of a region set to its nodes.
#pragma once

#include "dataset/fldgeo.h"
#include "format/ale.h"

namespace fld {

// Moves the nodes of `geo` in place. A node is moved by all actions, in order, of the last moving region that
// contains it and by no other region. Names that match no volume region are skipped. `ele2head`: offset of
// each element in the connectivity.
void actALE(const ALE& ale, FLDGEO& geo, const long* ele2head);

}  // namespace fld
