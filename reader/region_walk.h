// Iterates over the elements of volume regions and the faces of surface regions. Indices out of range and
// nodes beyond the end of a list are left out here, for all users.
#pragma once

#include <algorithm>
#include <cstdint>

#include "dataset/fldgeo.h"
#include "format/element_codes.h"

namespace fld {

inline bool is_inside(int index, int count) {
  return static_cast<unsigned>(index) < static_cast<unsigned>(count);
}

// Calls visit(code, nodes, given) for each face in order. `given` is the number of valid entries in `nodes`:
// the face's node count, or fewer if the list of nodes is too short.
template <class Visit>
void for_each_face(const SurfaceGeometry& surface, Visit visit) {
  long cursor = 0;
  for (int i = 0; i < surface.nface; ++i) {
    const int code = surface.faceType[i];
    const int count = nodes_of_face(code);
    const long rest = std::max(surface.nfaceNode - cursor, 0L);
    visit(code, surface.faceNode + std::min<long>(cursor, surface.nfaceNode),
          static_cast<int>(std::min<long>(count, rest)));
    cursor += count;
  }
}

// The node indices of the element at offset `head` of the connectivity, and how many of its `count` nodes
// exist.
struct ElementNodes {
  ElementNodes(const Elements& elements, long head, int count)
      : nodes(elements.conn + std::min(head, elements.nconn)),
        given(static_cast<int>(std::min<long>(count, std::max(elements.nconn - head, 0L)))) {}

  const int* nodes;
  int given;
};

// Calls visit(e, code) for the entries `begin` to `end` - 1 of the region's list of elements, in order.
// Element indices out of range are skipped.
template <class Visit>
void for_each_element(const VolumeGeometry& volume, const Elements* elements, int64_t begin, int64_t end,
                      Visit visit) {
  const int nelem = elements != nullptr ? elements->nelem : 0;
  for (int64_t i = begin; i < end; ++i) {
    const int e = volume.elem[i];
    if (is_inside(e, nelem)) visit(e, elements->type[e]);
  }
}

// Calls on_node(node) for every node below `nnode` of the region's triangles and quadrilaterals, with
// repetitions.
template <class OnNode>
void for_each_node(const SurfaceGeometry& surface, int nnode, OnNode on_node) {
  for_each_face(surface, [=](int code, const int* nodes, int given) {
    if (code == kLineFace) return;
    for (int j = 0; j < given; ++j) {
      if (is_inside(nodes[j], nnode)) on_node(nodes[j]);
    }
  });
}

// The same for the entries `begin` to `end` - 1 of the region's list of elements.
template <class OnNode>
void for_each_node(const VolumeGeometry& volume, const Elements* elements, const long* ele2head,
                   int64_t begin, int64_t end, int nnode, OnNode on_node) {
  for_each_element(volume, elements, begin, end, [=](int e, int code) {
    const ElementNodes element(*elements, ele2head[e], nodes_of_element(code));
    for (int j = 0; j < element.given; ++j) {
      if (is_inside(element.nodes[j], nnode)) on_node(element.nodes[j]);
    }
  });
}

}  // namespace fld
