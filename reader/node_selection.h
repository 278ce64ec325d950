// The nodes of the selected part: marks, the sorted list of marked nodes and their local numbers, kept in the
// work tables. The selection is valid until another part is selected. Node lists are cached until the
// geometry changes, so each part is searched once.
#pragma once

#include <span>

#include "reader/parts.h"
#include "reader/work_tables.h"

namespace fld {

// The nodes of a part.
struct PartNodes {
  int count = 0;
  bool is_whole_mesh = false;  // all nodes of the mesh; then there is no list and no local numbering
  std::span<const int> nodes;  // ascending
};

// Selects the part's nodes (sets g_mark_node). Takes time proportional to the part, not the mesh.
PartNodes select_nodes(const Part& part);

// Maps node indices of the mesh to node indices within the selected part, both from 0. Filled on first use
// per part.
const int* local_numbers();

// The marked nodes below `nnode`, ascending, for callers that set the marks themselves. Valid until a part is
// selected.
std::span<const int> list_marked_nodes(int nnode);

// The free space after the cached lists; large enough for all nodes of the mesh.
int* next_list();

// Marks the nodes that `visit` reports and lists those that were not marked before, in order of the calls.
// Takes time proportional to the number of calls, not the mesh.
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

// Marks the nodes below `nnode` of the region's elements.
void mark_nodes(const VolumeGeometry& volume, const Elements* elements, const long* ele2head, int nnode,
                char* marks);

// Clears the marks and the selection.
void forget_selection();

// Also forgets the cached node lists and the index of parts. Call before the geometry or the tables change.
void forget_parts();

// Clear the first `nnode` entries of `mark` and mark the region's nodes. Line faces and unknown codes are
// ignored. Return the number of marked nodes.
int fld_markNodesOnSurfaceRegion(const SurfaceGeometry* surface, int nnode, char* mark);
int fld_markNodesOnVolumeRegion(const VolumeGeometry* volume, const Elements* elements, const long* ele2head,
                                int nnode, char* mark);

}  // namespace fld
