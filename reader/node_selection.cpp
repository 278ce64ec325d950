#include "reader/node_selection.h"

#include <algorithm>

#include "reader/region_walk.h"
#include "reader/work_tables.h"

namespace fld {

namespace {

// What the work tables hold.
struct Selection {
  int part = 0;        // 0: none
  int count = 0;       // nodes
  bool whole = false;  // every mark is set, and there is no list
};
Selection selection;

// Collects the nodes that `visit` calls back with, then sorts and numbers them: the way for parts that are
// small beside the mesh.
template <class Visit>
int collect_nodes(Visit visit) {
  int count = 0;
  visit([&count](int node) {
    if (g_mark_node[static_cast<size_t>(node)] != 0) return;
    g_mark_node[static_cast<size_t>(node)] = 1;
    g_part_nodes[static_cast<size_t>(count++)] = node;
  });
  std::sort(g_part_nodes.begin(), g_part_nodes.begin() + count);
  for (int k = 0; k < count; ++k) {
    g_globalNode2localNode[static_cast<size_t>(g_part_nodes[static_cast<size_t>(k)])] = k;
  }
  return count;
}

// Passing over all marks costs less than sorting when the region names more nodes than this share of the
// mesh.
bool is_small(long named_nodes, int nnode) {
  return named_nodes < nnode / 16;
}

int select_surface(const SurfaceGeometry& surface, int nnode) {
  if (is_small(surface.nfaceNode, nnode)) {
    return collect_nodes([&](auto on_node) { for_each_node(surface, nnode, on_node); });
  }
  fld_markNodesOnSurfaceRegion(&surface, nnode, g_mark_node.data());
  return list_marked_nodes(nnode);
}

int select_volume(const VolumeGeometry& volume, const FLDGEO& geo, const long* ele2head, int nnode) {
  const Elements* elements = geo.elements.get();
  if (is_small(8L * volume.nelem, nnode)) {
    return collect_nodes([&](auto on_node) { for_each_node(volume, elements, ele2head, nnode, on_node); });
  }
  fld_markNodesOnVolumeRegion(&volume, elements, ele2head, nnode, g_mark_node.data());
  return list_marked_nodes(nnode);
}

}  // namespace

int list_marked_nodes(int nnode) {
  int count = 0;
  for (int i = 0; i < nnode; ++i) {
    const auto node = static_cast<size_t>(i);
    g_part_nodes[static_cast<size_t>(count)] = i;
    g_globalNode2localNode[node] = count;
    count += g_mark_node[node];
  }
  return count;
}

void forget_selection() {
  if (selection.whole) {
    std::fill(g_mark_node.begin(), g_mark_node.end(), 0);
  } else {
    for (int k = 0; k < selection.count; ++k) {
      g_mark_node[static_cast<size_t>(g_part_nodes[static_cast<size_t>(k)])] = 0;
    }
  }
  selection = {};
}

int select_nodes(const Part& part) {
  if (part.kind == Part::Kind::none) return 0;
  if (selection.part == part.number) return selection.count;
  forget_selection();
  const FLDGEO& geo = part.geo();
  const int nnode = geo.node_count();
  if (part.kind == Part::Kind::whole) {
    std::fill(g_mark_node.begin(), g_mark_node.end(), 1);
    selection = {part.number, nnode, true};
  } else {
    const int count = part.kind == Part::Kind::surface
                          ? select_surface(*part.surface, nnode)
                          : select_volume(*part.volume, geo, element_offsets(part.geoIndex), nnode);
    selection = {part.number, count, false};
  }
  return selection.count;
}

int fld_markNodesOnSurfaceRegion(const SurfaceGeometry* surface, int nnode, char* mark) {
  std::fill_n(mark, nnode, 0);
  for_each_node(*surface, nnode, [mark](int node) { mark[node] = 1; });
  return static_cast<int>(std::count(mark, mark + nnode, 1));
}

int fld_markNodesOnVolumeRegion(const VolumeGeometry* volume, const Elements* elements, const long* ele2head,
                                int nnode, char* mark) {
  std::fill_n(mark, nnode, 0);
  for_each_node(*volume, elements, ele2head, nnode, [mark](int node) { mark[node] = 1; });
  return static_cast<int>(std::count(mark, mark + nnode, 1));
}

}  // namespace fld
