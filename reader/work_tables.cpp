#include "reader/work_tables.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <new>
#include <string_view>
#include <utility>

#include "dataset/type_counts.h"
#include "format/code_runs.h"
#include "reader/node_selection.h"
#include "support/errors.h"
#include "support/huge_pages.h"
#include "support/worker_threads.h"

namespace fld {

namespace {

// Room for remembered node lists, in multiples of the mesh's nodes.
constexpr size_t kRememberedMeshes = 2;
constexpr int kOffsetsTag = 1000165;
// Up to this number of region sets, all tables are rebuilt when one does not fit, so that none outlives its
// mesh.
constexpr size_t kFewRegionSets = 64;

long count_nodes(const int* type, int64_t begin, int64_t end) {
  long nodes = 0;
  for_each_run(type, begin, end, [&nodes](int code, int64_t first, int64_t last) {
    nodes += (last - first) * nodes_of_solid(code);
  });
  return nodes;
}

void fill_offsets(long* heads, int nelem, const int* type) {
  const Ranges ranges = ranges_of(nelem, sizeof(long));
  const auto nodes_before =
      sums_before<long>(ranges, [type](int64_t begin, int64_t end) { return count_nodes(type, begin, end); });
  run_in_threads(ranges.count, [&](int k) {
    long head = nodes_before[static_cast<size_t>(k)];
    for_each_run(type, ranges.begin(k), ranges.end(k), [&head, heads](int code, int64_t first, int64_t last) {
      const int nodes = nodes_of_solid(code);
      for (int64_t e = first; e < last; ++e) heads[e] = head + (e - first) * nodes;
      head += (last - first) * nodes;
    });
  });
}

// Whether each offset follows from the one before.
bool has_offsets(const long* heads, int nelem, const int* type) {
  if (nelem > 0 && heads[0] != 0) return false;
  const int64_t others = sum_of_ranges(std::max(nelem - 1, 0), sizeof(long), [=](int64_t begin, int64_t end) {
    int64_t count = 0;
    for (int64_t e = begin; e < end; ++e) count += heads[e + 1] - heads[e] != nodes_of_solid(type[e]);
    return count;
  });
  return others == 0;
}

// One message per element, written in blocks because stderr is not buffered.
void report_invalid_types(int count) {
  constexpr std::string_view kMessage = "HANDLING AN INVALID DATA TYPE(1000174).";
  constexpr int kBlock = 100;  // messages
  std::array<char, kBlock * kMessage.size()> block;
  for (int i = 0; i < std::min(count, kBlock); ++i) {
    kMessage.copy(block.data() + static_cast<size_t>(i) * kMessage.size(), kMessage.size());
  }
  for (int rest = count; rest > 0; rest -= kBlock) {
    fwrite(block.data(), kMessage.size(), static_cast<size_t>(std::min(rest, kBlock)), stderr);
  }
}

// Whether the table has the offsets of these elements, or has room to be filled in with them.
bool agrees(ElementOffsets& offsets, const FLDGEO& geo) {
  const int nelem = geo.element_count();
  if (nelem > offsets.nelem) return false;
  if (!offsets.is_filled) {
    offsets.source = geo.elements;
    return true;
  }
  return nelem == 0 || has_offsets(offsets.heads.get(), nelem, geo.elements->type);
}

ElementOffsets make_offsets(const FLDGEO& geo) {
  const int nelem = geo.element_count();
  return {
      TrackedArray<long>(aloc_ele2head(nelem, nelem > 0 ? geo.elements->type : nullptr)), nelem, true, {}};
}

// The same to be filled in later: the table takes no memory until then.
ElementOffsets make_unfilled_offsets(const FLDGEO& geo) {
  const int nelem = geo.element_count();
  if (nelem == 0) return {};
  const Elements& elements = *geo.elements;
  auto* const heads = static_cast<long*>(cv_reserve(static_cast<size_t>(nelem), sizeof(long), kOffsetsTag));
  ElementOffsets offsets = {TrackedArray<long>(heads), nelem, false, geo.elements};
  report_invalid_types(nelem - elements.ntet - elements.npyr - elements.nprism - elements.nhex);
  return offsets;
}

struct WorkTables {
  NodeTable<char> mark_node;
  NodeTable<int> global_to_local;
  NodeTable<int> part_nodes;
  NodeTable<NodeList> part_lists;
  ElementOffsets offsets;
  std::vector<ElementOffsets> own_offsets;
};

// Tables for all region sets. Throws std::bad_alloc and MemoryAllocException.
WorkTables make_work_tables(const Geometry& geometry) {
  const std::vector<FLDGEO>& geos = geometry.geos;
  WorkTables tables;
  const auto largest = std::max_element(geos.begin(), geos.end(), [](const FLDGEO& a, const FLDGEO& b) {
    return a.node_count() < b.node_count();
  });
  if (largest == geos.end()) return tables;
  const auto nnode = static_cast<size_t>(largest->node_count());
  tables.mark_node.resize(nnode);
  tables.global_to_local.resize(nnode);
  tables.part_nodes.resize(nnode + kRememberedMeshes * nnode);
  tables.part_lists.resize(geometry.nsurface() + geometry.nvolume());
  tables.own_offsets.resize(geos.size());
  if (nnode > 0) tables.offsets = geos.size() == 1 ? make_unfilled_offsets(*largest) : make_offsets(*largest);
  for (size_t g = 0; g < geos.size(); ++g) {
    if (!agrees(tables.offsets, geos[g])) tables.own_offsets[g] = make_offsets(geos[g]);
  }
  return tables;
}

void publish(WorkTables tables) {
  forget_parts();
  g_mark_node = std::move(tables.mark_node);
  g_globalNode2localNode = std::move(tables.global_to_local);
  g_part_nodes = std::move(tables.part_nodes);
  g_part_lists = std::move(tables.part_lists);
  g_ele2head = std::move(tables.offsets);
  g_own_ele2head = std::move(tables.own_offsets);
}

ElementOffsets& offsets_of(size_t g) {
  return g < g_own_ele2head.size() && g_own_ele2head[g].nelem > 0 ? g_own_ele2head[g] : g_ele2head;
}

bool has_room_for(const FLDGEO& geo) {
  return static_cast<size_t>(geo.node_count()) <= g_mark_node.size();
}

}  // namespace

int allocMemoryForGeometry(const smart_ptr<Geometry>& geometry) {
  WorkTables tables;
  try {
    tables = make_work_tables(*geometry);
  } catch (const std::bad_alloc&) {
    return 1;
  }
  if (!tables.mark_node.empty() && tables.offsets.nelem == 0) return 2;
  publish(std::move(tables));
  return 0;
}

void freeMemoryForGeometry() {
  publish({});
}

long* aloc_ele2head(int nelem, int* type) {
  auto heads = make_tracked_array<long>(static_cast<size_t>(nelem), kOffsetsTag);
  fill_offsets(heads.get(), nelem, type);
  report_invalid_types(sum_of_ranges(nelem, sizeof(int), [type](int64_t begin, int64_t end) {
    return static_cast<int>(
        std::count_if(type + begin, type + end, [](int code) { return nodes_of_solid(code) == 0; }));
  }));
  return heads.release();
}

const long* element_offsets(int g) {
  ElementOffsets& offsets = offsets_of(static_cast<size_t>(g));
  if (const auto elements = std::exchange(offsets.source, {})) {
    take_huge_pages(offsets.heads.get(), static_cast<size_t>(elements->nelem) * sizeof(long));
    fill_offsets(offsets.heads.get(), elements->nelem, elements->type);
    offsets.is_filled = true;
  }
  return offsets.heads.get();
}

void release_elements() {
  g_ele2head.source = {};
}

void fit_work_tables(Geometry& geometry, int g) {
  FLDGEO& geo = geometry.geos[static_cast<size_t>(g)];
  const auto region = static_cast<size_t>(g);
  if (has_room_for(geo) && agrees(offsets_of(region), geo)) return;
  try {
    // All region sets may change at a step. Rebuilding all tables for each of many would be quadratic, so
    // only the offsets of this one are replaced.
    if (has_room_for(geo) && g_own_ele2head.size() > kFewRegionSets) {
      g_own_ele2head[region] = make_offsets(geo);
    } else {
      publish(make_work_tables(geometry));
    }
    return;
  } catch (const std::bad_alloc&) {
  } catch (const MemoryAllocException&) {
  }
  fputs("error : failed to allocate memory for geometry.\n", stderr);
  geo.nodes = {};
  geo.elements = {};
  release_elements();
  geometry.loadedStep[static_cast<size_t>(g)] = kNoFile;
  count_types(geo);
}

}  // namespace fld
