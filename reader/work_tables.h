// The work tables with which a part's nodes are found and renumbered. They are sized when a dataset is
// opened, so that requests for parts allocate nothing, and made to fit again when a step brings another mesh.
#pragma once

#include <vector>

#include "dataset/geometry.h"
#include "format/element_codes.h"
#include "support/lazy_zero_allocator.h"
#include "support/tracked_array.h"

namespace fld {

// Where each element's nodes begin in Elements::conn.
struct ElementOffsets {
  TrackedArray<long> heads;
  int nelem = 0;
  bool is_filled = true;
  smart_ptr<Elements> source;  // what it is to be filled in from
};

// Nodes that an element takes in the offset table, which knows the four solid shapes alone.
constexpr int nodes_of_solid(int code) {
  return code == kTriangle || code == kQuadrilateral ? 0 : nodes_of_element(code);
}

// Where a part's nodes are listed.
struct PartNodes {
  size_t begin;
  int count;
  bool known;
};

// One entry per node of the largest region set, at first zero. Opening a dataset touches none of them.
template <class T>
using NodeTable = std::vector<T, LazyZeroAllocator<T>>;

// Per node of the largest region set: 1 in the part being served, else 0.
extern NodeTable<char> g_mark_node;
// The local number, from 0, of each marked node of the part last served.
extern NodeTable<int> g_globalNode2localNode;
// The ascending node lists of parts, one behind the other, and room for one more of the whole mesh
// (node_selection.h).
extern NodeTable<int> g_part_nodes;
// Per surface and volume part, where its list stands there.
extern NodeTable<PartNodes> g_part_lists;
// Of the region set with the most nodes; serves all region sets that agree with it. Of a single region set it
// is filled in when an offset is first asked for.
extern ElementOffsets g_ele2head;
// Per region set; empty where g_ele2head serves.
extern std::vector<ElementOffsets> g_own_ele2head;

// Sizes the tables for the geometry; on success they take the place of the old ones. Returns 0, 1 when memory
// is exhausted or 2 when the region set with the most nodes has no elements, and leaves the tables as they
// were then. A geometry without nodes needs no tables. Throws MemoryAllocException.
int allocMemoryForGeometry(const smart_ptr<Geometry>& geometry);

// Releases the tables. Safe at any time.
void freeMemoryForGeometry();

// The offset of each of `nelem` elements in the connectivity, in a new tracked array; null for 0 elements.
// Only the four solid shapes have nodes here; any other code writes "HANDLING AN INVALID DATA TYPE(1000174)."
// to the standard error stream and takes no place. Throws MemoryAllocException.
long* aloc_ele2head(int nelem, int* type);

// Where the elements of region set `g` begin in its connectivity: an entry per element.
const long* element_offsets(int g);

// The region sets' elements are about to be replaced: lets go of them.
void release_elements();

// Makes the tables fit region set `g` after its geometry was read again. When memory is exhausted it says so
// and drops the region set's nodes and elements, so that nothing outgrows the tables; they are read again
// with the next step.
void fit_work_tables(Geometry& geometry, int g);

}  // namespace fld
