#include "reader/node_selection.h"

#include <algorithm>
#include <atomic>
#include <cstdint>
#include <cstring>
#include <iterator>
#include <utility>

#include "reader/region_walk.h"
#include "reader/work_tables.h"
#include "support/worker_threads.h"

namespace fld {

namespace {

// What the work tables hold.
struct Selection {
  int part = 0;  // 0: none
  PartNodes nodes;
  bool is_numbered = false;  // g_globalNode2localNode is filled for this part
};
Selection selection;

size_t remembered_end = 0;    // offset in g_part_nodes
bool any_remembered = false;  // g_part_lists has an entry

// Bytes that a node takes in the work tables: its index and its mark.
constexpr size_t kBytesOfNode = 5;

void mark(int node) {
  g_mark_node[static_cast<size_t>(node)] = 1;
}

// Threads may set the same mark.
void set_mark(char* marks, int node) {
  std::atomic_ref(marks[node]).store(1, std::memory_order_relaxed);
}

int count_marks(const char* marks, int nnode) {
  return sum_of_ranges(nnode, kBytesOfNode, [=](int64_t begin, int64_t end) {
    return static_cast<int>(std::count(marks + begin, marks + end, 1));
  });
}

// Lists the marked nodes from `begin` to `end` - 1 and returns the end of the list.
int* list_range(const char* marks, int64_t begin, int64_t end, int* list) {
  constexpr int kGroup = 8;  // marks tested at once
  constexpr uint64_t kAllMarked = 0x0101010101010101;
  auto node = static_cast<int>(begin);
  const auto last = static_cast<int>(end);
  while (node + kGroup <= last) {
    uint64_t group = 0;
    memcpy(&group, marks + node, sizeof group);
    if (group == kAllMarked) {
      for (int i = 0; i < kGroup; ++i) *list++ = node + i;
    } else if (group != 0) {
      for (int i = 0; i < kGroup; ++i) {
        if (marks[node + i] != 0) *list++ = node + i;
      }
    }
    node += kGroup;
  }
  for (; node < last; ++node) {
    if (marks[node] != 0) *list++ = node;
  }
  return list;
}

// Collects and sorts the nodes of `visit`. For parts that are small compared with the mesh.
template <class Visit>
std::span<const int> collect_nodes(Visit visit) {
  const std::span<int> nodes = mark_and_list(visit);
  std::sort(nodes.begin(), nodes.end());
  return nodes;
}

// For larger regions, scanning all marks is faster than sorting.
bool is_small(long named_nodes, int nnode) {
  return named_nodes < nnode / 16;
}

std::span<const int> find_nodes(const SurfaceGeometry& surface, int nnode) {
  if (is_small(surface.nfaceNode, nnode)) {
    return collect_nodes([&](auto on_node) { for_each_node(surface, nnode, on_node); });
  }
  fld_markNodesOnSurfaceRegion(&surface, nnode, g_mark_node.data());
  return list_marked_nodes(nnode);
}

// Whether the volume lists all elements of the mesh, in order, and its nodes are those of the whole
// connectivity.
bool is_whole_mesh(const VolumeGeometry& volume, const FLDGEO& geo) {
  if (!geo.has_sound_elements() || volume.nelem != geo.element_count()) return false;
  const Elements& elements = *geo.elements;
  if (elements.ntri != 0 || elements.nquad != 0 || elements.nodes() != elements.nconn) return false;
  const int* const elem = volume.elem;
  const int64_t others = sum_of_ranges(volume.nelem, sizeof(int), [=](int64_t begin, int64_t end) {
    int64_t count = 0;
    for (int64_t i = begin; i < end; ++i) count += elem[i] != i;
    return count;
  });
  return others == 0;
}

std::span<const int> find_nodes(const VolumeGeometry& volume, const FLDGEO& geo, int geoIndex, int nnode) {
  const Elements* elements = geo.elements.get();
  if (is_small(8L * volume.nelem, nnode)) {
    return collect_nodes([&](auto on_node) {
      for_each_node(volume, elements, element_offsets(geoIndex), 0, volume.nelem, nnode, on_node);
    });
  }
  if (is_whole_mesh(volume, geo)) {
    char* const marks = g_mark_node.data();
    const int* const conn = elements->conn;
    for_ranges(elements->nconn, sizeof(int), [=](int64_t begin, int64_t end) {
      for (int64_t i = begin; i < end; ++i) set_mark(marks, conn[i]);
    });
  } else {
    fld_markNodesOnVolumeRegion(&volume, elements, element_offsets(geoIndex), nnode, g_mark_node.data());
  }
  return list_marked_nodes(nnode);
}

std::span<const int> find_nodes(const Part& part, int nnode) {
  return part.kind == Part::Kind::surface ? find_nodes(*part.surface, nnode)
                                          : find_nodes(*part.volume, part.geo(), part.geoIndex, nnode);
}

// Keeps the list at next_list(), if enough room is left for the next one.
void remember(NodeList& entry, std::span<const int> nodes, int nnode) {
  const bool all = static_cast<int>(nodes.size()) == nnode;  // needs no list
  const size_t end = remembered_end + (all ? 0 : nodes.size());
  if (end + g_mark_node.size() > g_part_nodes.size()) return;
  entry = {remembered_end, static_cast<int>(nodes.size()), true};
  any_remembered = true;
  remembered_end = end;
}

std::span<const int> marked_again(const NodeList& entry) {
  const std::span<const int> nodes(g_part_nodes.data() + entry.begin, static_cast<size_t>(entry.count));
  for (const int node : nodes) mark(node);
  return nodes;
}

void select_all(int part, int count, size_t marks) {
  std::fill_n(g_mark_node.begin(), marks, 1);
  selection = {part, {count, true, {}}, false};
}

// Selects the nodes of a surface or volume.
void select_region(const Part& part) {
  const int nnode = part.geo().node_count();
  NodeList none = {};
  const auto index = static_cast<size_t>(part.number) - 1;
  NodeList& entry = index < g_part_lists.size() ? g_part_lists[index] : none;
  if (entry.known && entry.count == nnode) return select_all(part.number, nnode, static_cast<size_t>(nnode));
  const bool known = entry.known;
  const auto nodes = known ? marked_again(entry) : find_nodes(part, nnode);
  if (!known) remember(entry, nodes, nnode);
  const auto count = static_cast<int>(nodes.size());
  const bool all = count == nnode;
  selection = {part.number, {count, all, all ? std::span<const int>{} : nodes}, false};
}

}  // namespace

int* next_list() {
  return g_part_nodes.data() + remembered_end;
}

PartNodes select_nodes(const Part& part) {
  if (part.kind == Part::Kind::none) return {};
  if (selection.part == part.number) return selection.nodes;
  forget_selection();
  if (part.kind == Part::Kind::whole) {
    select_all(part.number, part.geo().node_count(), g_mark_node.size());
  } else {
    select_region(part);
  }
  return selection.nodes;
}

const int* local_numbers() {
  if (!selection.is_numbered) {
    const int* const nodes = selection.nodes.nodes.data();
    int* const numbers = g_globalNode2localNode.data();
    for_ranges(std::ssize(selection.nodes.nodes), sizeof(int), [=](int64_t begin, int64_t end) {
      for (int64_t number = begin; number < end; ++number) numbers[nodes[number]] = static_cast<int>(number);
    });
    selection.is_numbered = true;
  }
  return g_globalNode2localNode.data();
}

std::span<const int> list_marked_nodes(int nnode) {
  const char* const marks = g_mark_node.data();
  int* const list = next_list();
  const Ranges ranges = ranges_of(nnode, kBytesOfNode);
  const auto listed_before = sums_before<int64_t>(
      ranges, [=](int64_t begin, int64_t end) { return std::count(marks + begin, marks + end, 1); });
  int* list_end = list;
  run_in_threads(ranges.count, [&](int k) {
    int* const end =
        list_range(marks, ranges.begin(k), ranges.end(k), list + listed_before[static_cast<size_t>(k)]);
    if (k == ranges.count - 1) list_end = end;
  });
  return {list, list_end};
}

void forget_selection() {
  if (selection.nodes.is_whole_mesh) {
    std::fill(g_mark_node.begin(), g_mark_node.end(), 0);
  } else {
    for (const int node : selection.nodes.nodes) g_mark_node[static_cast<size_t>(node)] = 0;
  }
  selection = {};
}

void forget_parts() {
  forget_selection();
  forget_part_index();
  // When many region sets are read in turn, the table is cleared only once.
  if (std::exchange(any_remembered, false)) std::fill(g_part_lists.begin(), g_part_lists.end(), NodeList{});
  remembered_end = 0;
}

void mark_nodes(const VolumeGeometry& volume, const Elements* elements, const long* ele2head, int nnode,
                char* marks) {
  for_ranges(volume.nelem, sizeof(int), [&](int64_t begin, int64_t end) {
    for_each_node(volume, elements, ele2head, begin, end, nnode,
                  [marks](int node) { set_mark(marks, node); });
  });
}

int fld_markNodesOnSurfaceRegion(const SurfaceGeometry* surface, int nnode, char* mark) {
  std::fill_n(mark, nnode, 0);
  for_each_node(*surface, nnode, [mark](int node) { mark[node] = 1; });
  return count_marks(mark, nnode);
}

int fld_markNodesOnVolumeRegion(const VolumeGeometry* volume, const Elements* elements, const long* ele2head,
                                int nnode, char* mark) {
  std::fill_n(mark, nnode, 0);
  mark_nodes(*volume, elements, ele2head, nnode, mark);
  return count_marks(mark, nnode);
}

}  // namespace fld
