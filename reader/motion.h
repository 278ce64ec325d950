// Moving a region set's nodes as its motion says.
#pragma once

#include "dataset/fldgeo.h"
#include "format/ale.h"

namespace fld {

// Moves the nodes of `geo` in place, from the coordinates that it holds on entry. Each moving region puts its
// nodes back to those first, then applies its actions one after the other; a node of several regions so ends
// with the motion of the last one. Names that match no volume region are skipped. `ele2head`: where each
// element begins in the connectivity.
void actALE(const ALE& ale, FLDGEO& geo, const long* ele2head);

}  // namespace fld
