#include "reader/part_values.h"

#include <algorithm>

#include "reader/elements_of_type.h"
#include "reader/globals.h"

namespace fld {

namespace {

float material_of(const FLDGEO& geo, int element) {
  return is_inside(element, geo.material_count()) ? static_cast<float>(geo.matOfElements->mat[element])
                                                  : Ens_Undef_value;
}

}  // namespace

void copy_part_values(const PartNodes& part, const VFPA& values, int n, float* out) {
  ++out;  // the host's arrays start at entry 1
  visit_elements(values, [=, &part](const auto* from) {
    // Nodes are in ascending order, so those with a value come first.
    int given = 0;
    if (part.is_whole_mesh) {
      given = std::min(part.count, n);
      for_ranges(given, sizeof(float), [=](int64_t begin, int64_t end) {
        for (int64_t i = begin; i < end; ++i) out[i] = static_cast<float>(from[i]);
      });
    } else {
      const auto nodes = part.nodes;
      given = static_cast<int>(std::lower_bound(nodes.begin(), nodes.end(), n) - nodes.begin());
      const int* const node = nodes.data();
      for_ranges(given, sizeof(float), [=](int64_t begin, int64_t end) {
        for (int64_t k = begin; k < end; ++k) out[k] = static_cast<float>(from[node[k]]);
      });
    }
    std::fill(out + given, out + part.count, Ens_Undef_value);
  });
}

void write_materials(const Part& part, int slot, float* out) {
  if (part.kind == Part::Kind::none) return;
  ++out;  // the host's arrays start at entry 1
  const FLDGEO& geo = part.geo();
  if (part.kind == Part::Kind::surface) {
    const int wanted = face_code_of_slot(slot);
    const SurfaceGeometry& surface = *part.surface;
    for (int i = 0; wanted != 0 && i < surface.nface; ++i) {
      if (surface.faceType[i] == wanted) *out++ = material_of(geo, surface.faceLink[i]);
    }
    return;
  }
  const int wanted = element_code_of_slot(slot);
  if (wanted == 0) return;
  // Triangles and quadrilaterals have no material; their entries are undefined.
  const bool flat = wanted == kTriangle || wanted == kQuadrilateral;
  const auto material = [=, &geo](int e) { return flat ? Ens_Undef_value : material_of(geo, e); };
  const Elements* const elements = geo.elements.get();
  if (part.kind == Part::Kind::volume) {
    for_each_of_type(*part.volume, elements, wanted, [=](int64_t row, int e) { out[row] = material(e); });
  } else if (elements != nullptr) {
    for_each_of_type(*elements, wanted, [=](RowPlace place, int e) { out[place.row] = material(e); });
  }
}

}  // namespace fld
