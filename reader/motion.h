// Moving a region set's nodes as its motion says.
#pragma once

#include "dataset/fldgeo.h"
#include "format/ale.h"

namespace fld {

// Moves the nodes of `geo` in place, from the coordinates that it holds on entry: a node by the actions of
// the last moving region that has it, one after the other, and by no other region's. Names that match no
// volume region are skipped. `ele2head`: where each element begins in the connectivity.
void actALE(const ALE& ale, FLDGEO& geo, const long* ele2head);

}  // namespace fld
