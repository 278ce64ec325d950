// Part count and build information.
#include <algorithm>
#include <cstring>

#include "interface/userd_api.h"
#include "reader/globals.h"
#include "reader/node_selection.h"
#include "reader/parts.h"

namespace fld {

namespace {

constexpr int kDescriptionSize = 80;  // size of the host's buffer for a part's description

// The six element counts of a volume region or whole mesh.
void fill_counts(const ElementCounts& counted, int* slots) {
  slots[kSlotTriangle] = counted.ntri;
  slots[kSlotQuadrilateral] = counted.nquad;
  slots[kSlotTetrahedron] = counted.ntet;
  slots[kSlotPyramid] = counted.npyr;
  slots[kSlotPrism] = counted.nprism;
  slots[kSlotHexahedron] = counted.nhex;
}

const char* describe(const Part& part, int* slots) {
  std::fill_n(slots, kElementSlots, 0);
  switch (part.kind) {
    case Part::Kind::surface:
      slots[kSlotTriangle] = part.surface->ntri;
      slots[kSlotQuadrilateral] = part.surface->nquad;
      return part.surface->name;
    case Part::Kind::volume:
      fill_counts(*part.volume, slots);
      return part.volume->name;
    default:
      if (const Elements* elements = part.geo().elements.get()) fill_counts(*elements, slots);
      return "ALL_ELEMENTS";
  }
}

}  // namespace

}  // namespace fld

using namespace fld;

int USERD_get_number_of_model_parts() {
  Numparts_available = count_parts();
  return Numparts_available;
}

int USERD_get_gold_part_build_info(int* ids, int* types, char** descriptions, int* node_counts,
                                   int** element_counts, int** /*ijk_dimensions*/,
                                   int** /*iblanking_options*/) {
  const int parts = count_parts();
  for (int i = 0; i < parts; ++i) {
    const Part part = find_part(i + 1);
    ids[i] = part.number;
    types[i] = 0;  // unstructured
    const char* name = describe(part, element_counts[i]);
    strncpy(descriptions[i], name, kDescriptionSize - 1);
    descriptions[i][kDescriptionSize - 1] = '\0';
    node_counts[i] = part.kind == Part::Kind::whole ? part.geo().node_count() : select_nodes(part).count;
  }
  return 1;
}

void USERD_stop_part_building() {}
