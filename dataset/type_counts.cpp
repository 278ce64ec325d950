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

void report_bad_indices(const FLDGEO& geo, const std::string& path) {
  const int nnode = geo.node_count();
  const int nelem = geo.element_count();
  if (geo.elements) {
    const Elements& elements = *geo.elements;
    if (!elements.conn_range.is_inside(nnode)) {
      report(path, count_outside(elements.conn, elements.nconn, nnode),
             "NODE NUMBERS OF ELEMENTS OUT OF RANGE");
    }
    report(path, std::max(elements.nodes() - elements.nconn, 0L), "NODE NUMBERS OF ELEMENTS MISSING");
  }
  long bad_face_nodes = 0;
  long missing_face_nodes = 0;
  long bad_links = 0;
  for (const auto& surface : geo.surfaces) {
    bad_face_nodes += count_outside(surface->faceNode, surface->nfaceNode, nnode);
    missing_face_nodes += missing_nodes(*surface);
    bad_links += count_links_outside(surface->faceLink, surface->nface, nelem);
  }
  report(path, bad_face_nodes, "NODE NUMBERS OF FACES OUT OF RANGE");
  report(path, missing_face_nodes, "NODE NUMBERS OF FACES MISSING");
  report(path, bad_links, "ELEMENT NUMBERS OF FACES OUT OF RANGE");
  long bad_elements = 0;
  for (const auto& volume : geo.volumes) bad_elements += count_outside(volume->elem, volume->nelem, nelem);
  report(path, bad_elements, "ELEMENT NUMBERS OF VOLUMES OUT OF RANGE");
}

}  // namespace fld
