// The connectivity of a part: one row of local node numbers per element.
#include "interface/userd_api.h"
#include "reader/elements_of_type.h"
#include "reader/globals.h"
#include "reader/node_selection.h"
#include "reader/parts.h"
#include "reader/region_walk.h"
#include "reader/work_tables.h"

namespace fld {

namespace {

// The host's node numbers start at 1. Node 1 also replaces missing or out-of-range nodes.
constexpr int kFirstNode = 1;

// Node number within the part: from the table of local numbers, or that of the mesh.
struct LocalNumber {
  const int* table;
  int operator()(int node) const { return table[node] + 1; }
};
struct MeshNumber {
  int operator()(int node) const { return node + 1; }
};

// The same for meshes with out-of-range node indices.
template <class Number>
struct CheckedNumber {
  Number number;
  int nnode;
  int operator()(int node) const { return is_inside(node, nnode) ? number(node) : kFirstNode; }
};

// Calls `work` with the numbering of the nodes of the part, which it selects.
template <class Work>
void with_numbering(const Part& part, Work work) {
  if (select_nodes(part).is_whole_mesh) {
    work(MeshNumber{});
  } else {
    work(LocalNumber{local_numbers()});
  }
}

// Writes the row of an element of `kNodes` nodes, of which `given` are in the file.
template <int kNodes, class Number>
void write_row(int* row, const int* nodes, int given, Number number) {
  for (int j = 0; j < kNodes; ++j) row[j] = j < given ? number(nodes[j]) : kFirstNode;
}

// The same if all of them are in the file.
template <int kNodes, class Number>
void write_full_row(int* row, const int* nodes, Number number) {
  for (int j = 0; j < kNodes; ++j) row[j] = number(nodes[j]);
}

// Calls `work` with `nodes` as a compile-time constant if it is one of `kCounts`; otherwise does nothing.
template <int... kCounts, class Work>
void with_node_count(int nodes, Work work) {
  const auto try_count = [&]<int kNodes>() {
    if (nodes == kNodes) work.template operator()<kNodes>();
  };
  (try_count.template operator()<kCounts>(), ...);
}

void write_surface_rows(const Part& part, int slot, int** rows) {
  const int wanted = face_code_of_slot(slot);
  with_node_count<3, 4>(nodes_of_face(wanted), [&]<int kNodes>() {
    with_numbering(part, [&](auto unchecked) {
      const CheckedNumber<decltype(unchecked)> number = {unchecked, part.geo().node_count()};
      for_each_face(*part.surface, [&, next = rows](int code, const int* nodes, int given) mutable {
        if (code == wanted) write_row<kNodes>(*next++, nodes, given, number);
      });
    });
  });
}

// Calls `write` with the elements and a function that writes the row of the element at offset `head` of the
// connectivity, with range checks only if the mesh needs them. Does nothing without elements.
template <int kNodes, class Number, class Write>
void with_row_writer(const Part& part, Number number, Write write) {
  const FLDGEO& geo = part.geo();
  const Elements* const elements = geo.elements.get();
  if (elements == nullptr) return;
  if (geo.has_sound_elements()) {
    const int* const conn = elements->conn;
    write(*elements, [=](int* row, long head) { write_full_row<kNodes>(row, conn + head, number); });
    return;
  }
  const CheckedNumber<Number> checked = {number, geo.node_count()};
  write(*elements, [=](int* row, long head) {
    const ElementNodes element(*elements, head, kNodes);
    write_row<kNodes>(row, element.nodes, element.given, checked);
  });
}

void write_volume_rows(const Part& part, int slot, int** rows) {
  const int wanted = element_code_of_slot(slot);
  const long* const ele2head = element_offsets(part.geoIndex);
  with_node_count<3, 4, 5, 6, 8>(nodes_of_element(wanted), [&]<int kNodes>() {
    with_numbering(part, [&](auto number) {
      with_row_writer<kNodes>(part, number, [&](const Elements& elements, auto write_row_of) {
        for_each_of_type(*part.volume, &elements, wanted,
                         [=](int64_t row, int e) { write_row_of(rows[row], ele2head[e]); });
      });
    });
  });
}

void write_mesh_rows(const Part& part, int slot, int** rows) {
  const int wanted = element_code_of_slot(slot);
  with_node_count<3, 4, 5, 6, 8>(nodes_of_element(wanted), [&]<int kNodes>() {
    with_row_writer<kNodes>(part, MeshNumber{}, [&](const Elements& elements, auto write_row_of) {
      for_each_of_type(elements, wanted,
                       [=](RowPlace place, int) { write_row_of(rows[place.row], place.head); });
    });
  });
}

}  // namespace

}  // namespace fld

using namespace fld;

int USERD_get_part_elements_by_type(int number, int slot, int** rows) {
  const Part part = find_part(number);
  switch (part.kind) {
    case Part::Kind::surface:
      write_surface_rows(part, slot, rows);
      break;
    case Part::Kind::volume:
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
