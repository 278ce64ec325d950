#include "reader/part_values.h"

#include <algorithm>

#include "reader/globals.h"
#include "reader/node_selection.h"

namespace fld {

void copy_part_values(int count, const VFPA& values, int n, float* out) {
  ++out;  // the host's arrays begin at entry 1
  visit_elements(values, [=](const auto* from) {
    // Nodes are in ascending order, so those with a value come first.
    int given = 0;
    if (all_nodes_selected()) {
      given = std::min(count, n);
      for (int i = 0; i < given; ++i) out[i] = static_cast<float>(from[i]);
    } else {
      const auto nodes = selected_nodes();
      given = static_cast<int>(std::lower_bound(nodes.begin(), nodes.end(), n) - nodes.begin());
      const int* const node = nodes.data();
      for (int k = 0; k < given; ++k) out[k] = static_cast<float>(from[node[k]]);
    }
    std::fill(out + given, out + count, Ens_Undef_value);
  });
}

}  // namespace fld
