// The nodes of the part being served: marks, the ascending list of the marked nodes, and their local numbers,
// kept in the work tables. The selection stays valid until another part is selected, and the lists of the
// parts before it are remembered while the geometry stands, so a part's nodes are looked for once.
#pragma once

#include <span>

#include "reader/parts.h"
#include "reader/work_tables.h"

namespace fld {

// Selects the part's nodes, that is sets g_mark_node, and returns how many there are. The time it takes
// follows the part, not the mesh.
int select_nodes(const Part& part);

// Whether the selected part has all nodes of its mesh; nothing is listed or numbered then, as it would be the
// identity.
bool all_nodes_selected();

// The selected nodes in ascending order.
std::span<const int> selected_nodes();

// The number of each selected node within the part, from 0, by its number in the mesh:
// g_globalNode2localNode, which is filled when a part is first asked for it.
const int* local_numbers();

// The nodes below `nnode` that are marked, in ascending order; valid until a part is selected. For users that
// set the marks on their own.
std::span<const int> list_marked_nodes(int nnode);

// Where these lists go, behind those that are remembered; there is room for a list of the whole mesh.
int* next_list();

// Marks the nodes that `visit` calls back with and lists those that were not marked before, in the order of
// the calls. The time it takes follows the calls, not the mesh.
template <class Visit>
std::span<int> mark_and_list(Visit visit) {
  int* const list = next_list();
  int* end = list;
  char* const marks = g_mark_node.data();
  visit([&end, marks](int node) {
    if (marks[node] != 0) return;
    marks[node] = 1;
    *end++ = node;
  });
  return {list, end};
}

// Clears the marks of the selected part and forgets which it is.
void forget_selection();

// Forgets the lists of all parts as well: the geometry or the tables are about to change.
void forget_node_lists();

// Mark a region's nodes, which have an entry each in `mark` (at least nnode), after clearing the first nnode
// entries. Line faces and unknown codes mark nothing. Return how many of the first nnode entries are 1.
int fld_markNodesOnSurfaceRegion(const SurfaceGeometry* surface, int nnode, char* mark);
int fld_markNodesOnVolumeRegion(const VolumeGeometry* volume, const Elements* elements, const long* ele2head,
                                int nnode, char* mark);

}  // namespace fld
