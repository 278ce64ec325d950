// The nodes of the part being served: marks, the ascending list of the marked nodes, and their local numbers,
// kept in the work tables. The selection stays valid until another part is selected or the geometry changes,
// so a part's coordinates, connectivity and values find it once.
#pragma once

#include "reader/parts.h"

namespace fld {

// Selects the part's nodes: sets g_mark_node, g_part_nodes and, for surface and volume parts,
// g_globalNode2localNode. Returns how many there are. The time it takes follows the part, not the mesh. For a
// whole mesh every node is selected, and the list and local numbers, which would be the identity, are left
// alone.
int select_nodes(const Part& part);

// Lists the nodes below `nnode` that are marked in g_part_nodes, numbers them in g_globalNode2localNode, and
// returns how many there are. One pass over the marks, for users that set them on their own and for parts
// that hold a good share of the mesh.
int list_marked_nodes(int nnode);

// Clears the marks of the selected part and forgets which it is: its geometry or the tables are about to
// change.
void forget_selection();

// Mark a region's nodes, which have an entry each in `mark` (at least nnode), after clearing the first nnode
// entries. Line faces and unknown codes mark nothing. Return how many of the first nnode entries are 1.
int fld_markNodesOnSurfaceRegion(const SurfaceGeometry* surface, int nnode, char* mark);
int fld_markNodesOnVolumeRegion(const VolumeGeometry* volume, const Elements* elements, const long* ele2head,
                                int nnode, char* mark);

}  // namespace fld
