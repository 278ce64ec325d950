#include "dataset/node_motion.h"

#include <iterator>
#include <type_traits>

#include "dataset/affine_motion.h"
#include "support/worker_threads.h"

namespace fld {

namespace {

struct Coordinates {
  VFPA x, y, z;
};

// Of its index and coordinates: what makes a range worth a thread.
constexpr size_t kBytesOfNode = 16;

// Applies `map` in double precision to the coordinates of `nodes`, which are distinct, and rounds to each
// array's precision.
template <class Map>
void transform(const Coordinates& coordinates, std::span<const int> nodes, const Map& map) {
  visit_elements(coordinates.x, [&](auto* x) {
    visit_elements(coordinates.y, [&](auto* y) {
      visit_elements(coordinates.z, [&](auto* z) {
        for_ranges(std::ssize(nodes), kBytesOfNode, [=](long begin, long end) {
          for (long k = begin; k < end; ++k) {
            const int i = nodes[static_cast<size_t>(k)];
            const Point moved = map(Point{x[i], y[i], z[i]});
            x[i] = static_cast<std::remove_pointer_t<decltype(x)>>(moved.x);
            y[i] = static_cast<std::remove_pointer_t<decltype(y)>>(moved.y);
            z[i] = static_cast<std::remove_pointer_t<decltype(z)>>(moved.z);
          }
        });
      });
    });
  });
}

}  // namespace

void move_nodes(const ALE_ACT& act, const VFPA& x, const VFPA& y, const VFPA& z, std::span<const int> nodes) {
  const Coordinates coordinates = {x, y, z};
  switch (act.motion()) {
    case Motion::translate:
      transform(coordinates, nodes, Translation(act));
      break;
    case Motion::scale:
      transform(coordinates, nodes, Scaling(act));
      break;
    case Motion::rotate:
      transform(coordinates, nodes, Rotation(act));
      break;
    case Motion::four_points: {
      const FourPoints map(act);
      if (map.valid) transform(coordinates, nodes, map);
      break;
    }
    case Motion::none:
      break;
  }
}

}  // namespace fld
