// The work tables for finding and renumbering a part's nodes. They are sized when a dataset is opened, so
// that requests for parts allocate nothing, and resized when a step brings a mesh that does not fit.
#pragma once

#include <vector>

#include "dataset/geometry.h"
#include "format/element_codes.h"
#include "support/lazy_zero_allocator.h"
#include "support/tracked_array.h"

namespace fld {

// The offset of each element's nodes in Elements::conn.
struct ElementOffsets {
  TrackedArray<long> heads;
  int nelem = 0;
  bool is_filled = true;
  smart_ptr<Elements> source;  // what it is to be filled in from
};

// Number of nodes for the offset table, which only counts the four solid shapes.
constexpr int nodes_of_solid(int code) {
  return code == kTriangle || code == kQuadrilateral ? 0 : nodes_of_element(code);
}

// A cached node list: its position in g_part_nodes.
struct NodeList {
  size_t begin;
  int count;
  bool known;
};

// One entry per node of the largest region set, zeroed lazily by the system.
template <class T>
using NodeTable = std::vector<T, LazyZeroAllocator<T>>;

// Per node of the largest region set: 1 if it belongs to the selected part, else 0.
extern NodeTable<char> g_mark_node;
// The local number, from 0, of each marked node.
extern NodeTable<int> g_globalNode2localNode;
// The cached node lists, and room for one more list of the whole mesh (node_selection.h).
extern NodeTable<int> g_part_nodes;
// Per surface and volume part, its cached node list.
extern NodeTable<NodeList> g_part_lists;
// The offsets of the region set with the most nodes, used for all region sets that have the same.
extern ElementOffsets g_ele2head;
// Per region set, its own offsets; empty if g_ele2head is used.
extern std::vector<ElementOffsets> g_own_ele2head;

// Allocates the tables for the geometry and, on success, replaces the old ones. Returns 0, 1 (out of memory)
// or 2 (the region set with the most nodes has no elements). A geometry without nodes needs no tables. Throws
// MemoryAllocException.
int allocMemoryForGeometry(const smart_ptr<Geometry>& geometry);

// Frees the tables. May be called at any time.
void freeMemoryForGeometry();

// The offsets of `nelem` elements in the connectivity, in a new tracked array; null for 0 elements. Only the
// four solid shapes are counted; any other code writes "HANDLING AN INVALID DATA TYPE(1000174)." to stderr
// and takes no space. Throws MemoryAllocException.
long* aloc_ele2head(int nelem, int* type);

// The offset of each element of region set `g` in its connectivity.
const long* element_offsets(int g);

// The region sets' elements are about to be replaced: lets go of them.
void release_elements();

// Resizes the tables if necessary after region set `g` was reloaded. If memory is exhausted, writes a message
// and drops the region set's nodes and elements, which are read again with the next step.
void fit_work_tables(Geometry& geometry, int g);

}  // namespace fld
