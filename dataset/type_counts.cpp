#include "dataset/type_counts.h"

#include <algorithm>
#include <cstdio>

#include "format/element_codes.h"

namespace fld {

namespace {

bool inside(int index, int count) {
  return static_cast<unsigned>(index) < static_cast<unsigned>(count);
}

long count_outside(const int* indices, long n, int count) {
  long outside = 0;
  for (long i = 0; i < n; ++i) outside += !inside(indices[i], count);
  return outside;
}

// A face link of -1 means "no element" and is valid.
long count_links_outside(const int* links, long n, int count) {
  long outside = 0;
  for (long i = 0; i < n; ++i) outside += links[i] != -1 && !inside(links[i], count);
  return outside;
}

// Number of node indices that the surface's faces lack.
long missing_nodes(const SurfaceGeometry& surface) {
  long needed = 0;
  for (int i = 0; i < surface.nface; ++i) needed += nodes_of_face(surface.faceType[i]);
  return std::max<long>(needed - surface.nfaceNode, 0);
}

void report(const std::string& path, long count, const char* what) {
  if (count > 0) fprintf(stderr, "WARNING : %ld %s IN %s\n", count, what, path.c_str());
}

}  // namespace

void count_types(FLDGEO& geo) {
  for (auto& surface : geo.surfaces) {
    surface->ntri = surface->nquad = 0;
    for (int i = 0; i < surface->nface; ++i) {
      surface->ntri += surface->faceType[i] == kTriangleFace;
      surface->nquad += surface->faceType[i] == kQuadrilateralFace;
    }
  }
  const int nelem = geo.element_count();
  for (auto& volume : geo.volumes) {
    ElementCounts counts;
    for (int i = 0; i < volume->nelem; ++i) {
      if (inside(volume->elem[i], nelem)) counts.add(geo.elements->type[volume->elem[i]]);
    }
    static_cast<ElementCounts&>(*volume) = counts;
  }
  if (!geo.elements) return;
  ElementCounts counts;
  for (int e = 0; e < nelem; ++e) counts.add(geo.elements->type[e]);
  static_cast<ElementCounts&>(*geo.elements) = counts;
}

BadIndices& BadIndices::operator+=(const BadIndices& other) {
  element_nodes += other.element_nodes;
  missing_element_nodes += other.missing_element_nodes;
  face_nodes += other.face_nodes;
  missing_face_nodes += other.missing_face_nodes;
  face_elements += other.face_elements;
  volume_elements += other.volume_elements;
  return *this;
}

BadIndices count_bad_indices(const FLDGEO& geo) {
  BadIndices bad;
  const int nnode = geo.node_count();
  const int nelem = geo.element_count();
  if (geo.elements) {
    const Elements& elements = *geo.elements;
    if (!elements.conn_range.is_inside(nnode)) {
      bad.element_nodes = count_outside(elements.conn, elements.nconn, nnode);
    }
    bad.missing_element_nodes = std::max(elements.nodes() - elements.nconn, 0L);
  }
  for (const auto& surface : geo.surfaces) {
    bad.face_nodes += count_outside(surface->faceNode, surface->nfaceNode, nnode);
    bad.missing_face_nodes += missing_nodes(*surface);
    bad.face_elements += count_links_outside(surface->faceLink, surface->nface, nelem);
  }
  for (const auto& volume : geo.volumes) {
    bad.volume_elements += count_outside(volume->elem, volume->nelem, nelem);
  }
  return bad;
}

void report_bad_indices(const BadIndices& bad, const std::string& path) {
  report(path, bad.element_nodes, "NODE NUMBERS OF ELEMENTS OUT OF RANGE");
  report(path, bad.missing_element_nodes, "NODE NUMBERS OF ELEMENTS MISSING");
  report(path, bad.face_nodes, "NODE NUMBERS OF FACES OUT OF RANGE");
  report(path, bad.missing_face_nodes, "NODE NUMBERS OF FACES MISSING");
  report(path, bad.face_elements, "ELEMENT NUMBERS OF FACES OUT OF RANGE");
  report(path, bad.volume_elements, "ELEMENT NUMBERS OF VOLUMES OUT OF RANGE");
}

}  // namespace fld
