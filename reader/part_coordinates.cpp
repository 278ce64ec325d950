// The node coordinates of a part.
#include <cmath>
#include <cstdint>

#include "interface/userd_api.h"
#include "reader/globals.h"
#include "reader/node_selection.h"
#include "reader/part_values.h"
#include "reader/parts.h"
#include "support/worker_threads.h"

namespace fld {

namespace {

constexpr int kCylindrical = 1;

// Converts radius and angle in entries 1 to `n` to x and y, in place.
void to_cartesian(float* x, float* y, int n) {
  for_ranges(n, sizeof(float), [=](int64_t begin, int64_t end) {
    for (int64_t k = begin + 1; k <= end; ++k) {
      const auto radius = static_cast<double>(x[k]);
      const auto angle = static_cast<double>(y[k]);
      x[k] = static_cast<float>(radius * std::cos(angle));
      y[k] = static_cast<float>(radius * std::sin(angle));
    }
  });
}

}  // namespace

}  // namespace fld

using namespace fld;

int USERD_get_part_coords(int number, float** coords) {
  const Part part = find_part(number);
  const PartNodes selected = select_nodes(part);
  if (selected.count <= 0) return 1;
  const Nodes& nodes = *part.geo().nodes;
  const VFPA* const axes[] = {&nodes.x, &nodes.y, &nodes.z};
  for (int axis = 0; axis < 3; ++axis) copy_part_values(selected, *axes[axis], nodes.nnode, coords[axis]);
  // The whole mesh keeps the coordinates of the file, whatever its coordinate system.
  if (part.kind != Part::Kind::whole && part.geo().coordinateSystem == kCylindrical) {
    to_cartesian(coords[0], coords[1], selected.count);
  }
  return 1;
}

int USERD_get_part_node_ids(int /*part*/, int* /*ids*/) {
  return 1;
}
