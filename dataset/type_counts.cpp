#include "dataset/type_counts.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdio>

#include "format/element_codes.h"
#include "support/worker_threads.h"

namespace fld {

namespace {

bool inside(int index, int count) {
  return static_cast<unsigned>(index) < static_cast<unsigned>(count);
}

long count_outside(const int* indices, long n, int count) {
  return sum_of_ranges(n, sizeof(int), [=](long begin, long end) {
    long outside = 0;
    for (long i = begin; i < end; ++i) outside += !inside(indices[i], count);
    return outside;
  });
}

// A face link of -1 means "no element" and is valid.
long count_links_outside(const int* links, long n, int count) {
  return sum_of_ranges(n, sizeof(int), [=](long begin, long end) {
    long outside = 0;
    for (long i = begin; i < end; ++i) outside += links[i] != -1 && !inside(links[i], count);
    return outside;
  });
}

// Number of node indices that the surface's faces lack.
long missing_nodes(const SurfaceGeometry& surface) {
  const int* const types = surface.faceType;
  const long needed = sum_of_ranges(surface.nface, sizeof(int), [=](long begin, long end) {
    long nodes = 0;
    for (long i = begin; i < end; ++i) nodes += nodes_of_face(types[i]);
    return nodes;
  });
  return std::max<long>(needed - surface.nfaceNode, 0);
}

int count_code(const int* codes, long n, int wanted) {
  return sum_of_ranges(n, sizeof(int), [=](long begin, long end) {
    return static_cast<int>(std::count(codes + begin, codes + end, wanted));
  });
}

ElementCounts counts_of(const Elements& elements) {
  const int* const types = elements.type;
  return sum_of_ranges(elements.nelem, sizeof(int), [=](long begin, long end) {
    ElementCounts counts;
    for (long e = begin; e < end; ++e) counts.add(types[e]);
    return counts;
  });
}

// `types` are those of the mesh's elements.
ElementCounts counts_of(const VolumeGeometry& volume, const int* types, int nelem) {
  const int* const elements = volume.elem;
  return sum_of_ranges(volume.nelem, sizeof(int), [=](long begin, long end) {
    ElementCounts counts;
    std::array<int, 1024> codes;  // of a block, so that counting them is vectorised
    while (begin < end) {
      const auto n = static_cast<size_t>(std::min<long>(end - begin, codes.size()));
      for (size_t i = 0; i < n; ++i) {
        const int e = elements[begin + static_cast<long>(i)];
        codes[i] = inside(e, nelem) ? types[e] : 0;
      }
      for (size_t i = 0; i < n; ++i) counts.add(codes[i]);
      begin += static_cast<long>(n);
    }
    return counts;
  });
}

void report(const std::string& path, long count, const char* what) {
  if (count > 0) fprintf(stderr, "WARNING : %ld %s IN %s\n", count, what, path.c_str());
}

}  // namespace

void count_types(FLDGEO& geo) {
  for (auto& surface : geo.surfaces) {
    surface->ntri = count_code(surface->faceType, surface->nface, kTriangleFace);
    surface->nquad = count_code(surface->faceType, surface->nface, kQuadrilateralFace);
  }
  const int nelem = geo.element_count();
  const int* const types = nelem > 0 ? geo.elements->type : nullptr;
  for (auto& volume : geo.volumes) {
    static_cast<ElementCounts&>(*volume) = counts_of(*volume, types, nelem);
  }
  if (geo.elements) static_cast<ElementCounts&>(*geo.elements) = counts_of(*geo.elements);
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
