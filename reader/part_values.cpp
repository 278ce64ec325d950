#include "reader/part_values.h"

#include <algorithm>

#include "reader/globals.h"
#include "reader/work_tables.h"

namespace fld {

void copy_part_values(const Part& part, int count, const VFPA& values, int n, float* out) {
  ++out;  // the host's arrays begin at entry 1
  visit_elements(values, [=](const auto* from) {
    // Nodes are in ascending order, so those with a value come first.
    int given = 0;
    if (part.kind == Part::Kind::whole) {
      given = std::min(count, n);
      for (int i = 0; i < given; ++i) out[i] = static_cast<float>(from[i]);
    } else {
      const int* nodes = g_part_nodes.data();
      given = static_cast<int>(std::lower_bound(nodes, nodes + count, n) - nodes);
      for (int k = 0; k < given; ++k) out[k] = static_cast<float>(from[nodes[k]]);
    }
    std::fill(out + given, out + count, Ens_Undef_value);
  });
}

}  // namespace fld
