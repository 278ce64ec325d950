// The connectivity of a part, one row of local node numbers per element.
#include "interface/userd_api.h"
#include "reader/globals.h"
#include "reader/node_selection.h"
#include "reader/parts.h"
#include "reader/region_walk.h"
#include "reader/work_tables.h"

namespace fld {

namespace {

// Node numbers of the host count from 1; node 1 also stands where the file gives no node of the mesh.
constexpr int kFirstNode = 1;

// The number of a node within the part: from the table of local numbers, or the mesh's own.
struct LocalNumber {
  const int* table;
  int nnode;
  int operator()(int node) const { return is_inside(node, nnode) ? table[node] + 1 : kFirstNode; }
};
struct MeshNumber {
  int nnode;
  int operator()(int node) const { return is_inside(node, nnode) ? node + 1 : kFirstNode; }
};

// Writes the row of an element of `kNodes` nodes, of which the file gives `given`.
template <int kNodes, class Number>
void write_row(int* row, const int* nodes, int given, Number number) {
  if (given == kNodes) {
    for (int j = 0; j < kNodes; ++j) row[j] = number(nodes[j]);
    return;
  }
  for (int j = 0; j < kNodes; ++j) row[j] = j < given ? number(nodes[j]) : kFirstNode;
}

// Calls `work` with the number of nodes of the code as a compile-time constant; not at all for a code without
// a shape.
template <class Work>
void with_node_count(int nodes, Work work) {
  switch (nodes) {
    case 3:
      work.template operator()<3>();
      break;
    case 4:
      work.template operator()<4>();
      break;
    case 5:
      work.template operator()<5>();
      break;
    case 6:
      work.template operator()<6>();
      break;
    case 8:
      work.template operator()<8>();
      break;
    default:
      break;
  }
}

void write_surface_rows(const Part& part, int slot, int** rows) {
  const int wanted = face_code_of_slot(slot);
  with_node_count(nodes_of_face(wanted), [&]<int kNodes>() {
    const LocalNumber number = {g_globalNode2localNode.data(), part.geo().node_count()};
    for_each_face(*part.surface, [&, next = rows](int code, const int* nodes, int given) mutable {
      if (code == wanted) write_row<kNodes>(*next++, nodes, given, number);
    });
  });
}

void write_volume_rows(const Part& part, int slot, int** rows) {
  const int wanted = element_code_of_slot(slot);
  with_node_count(nodes_of_element(wanted), [&]<int kNodes>() {
    const Elements* elements = part.geo().elements.get();
    const long* ele2head = element_offsets(part.geoIndex);
    const LocalNumber number = {g_globalNode2localNode.data(), part.geo().node_count()};
    for_each_element(*part.volume, elements, [&, next = rows](int e, int code) mutable {
      if (code != wanted) return;
      const ElementNodes element(*elements, ele2head, e, kNodes);
      write_row<kNodes>(*next++, element.nodes, element.given, number);
    });
  });
}

void write_mesh_rows(const Part& part, int slot, int** rows) {
  const int wanted = element_code_of_slot(slot);
  with_node_count(nodes_of_element(wanted), [&]<int kNodes>() {
    const Elements* elements = part.geo().elements.get();
    const long* ele2head = element_offsets(part.geoIndex);
    const MeshNumber number = {part.geo().node_count()};
    for (int e = 0; e < part.geo().element_count(); ++e) {
      if (elements->type[e] != wanted) continue;
      const ElementNodes element(*elements, ele2head, e, kNodes);
      write_row<kNodes>(*rows++, element.nodes, element.given, number);
    }
  });
}

}  // namespace

}  // namespace fld

using namespace fld;

int USERD_get_part_elements_by_type(int number, int slot, int** rows) {
  const Part part = find_part(number);
  switch (part.kind) {
    case Part::Kind::surface:
      select_nodes(part);
      write_surface_rows(part, slot, rows);
      break;
    case Part::Kind::volume:
      select_nodes(part);
      write_volume_rows(part, slot, rows);
      break;
    case Part::Kind::whole:
      write_mesh_rows(part, slot, rows);
      break;
    case Part::Kind::none:
      break;
  }
  return 1;
}

int USERD_get_part_element_ids_by_type(int /*part*/, int /*slot*/, int* /*ids*/) {
  return 1;
}
