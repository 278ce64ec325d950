// Distinguishes surfaces, volumes and whole meshes. The interface does not tell; it follows from the order of
// the parts: the surfaces of all region sets, their volumes, then one whole mesh per region set.
#pragma once

#include <vector>

#include "host/dataset.h"

namespace host {

// The name of every whole-mesh part.
inline constexpr char kWholeMeshName[] = "ALL_ELEMENTS";

// Sets `kind` and `region_set` of the parts and returns the number of region sets. The parts named
// ALL_ELEMENTS at the end are the whole meshes. The volumes begin at the first other part with cells, so an
// empty volume right before it counts as a surface. The region set of a surface or volume is known only if
// there is just one.
int set_part_kinds(std::vector<Part>& parts);

}  // namespace host
