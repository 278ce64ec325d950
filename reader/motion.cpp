#include "reader/motion.h"

#include <algorithm>
#include <span>
#include <utility>
#include <vector>

#include "reader/affine_motion.h"
#include "reader/node_selection.h"
#include "reader/region_walk.h"
#include "reader/volume_names.h"
#include "reader/work_tables.h"

namespace fld {

namespace {

// Applies `map` in double precision to the coordinates of `nodes` and rounds to each array's precision.
template <class Map>
void transform(const Nodes& coordinates, std::span<const int> nodes, const Map& map) {
  visit_elements(coordinates.x, [&](auto* x) {
    visit_elements(coordinates.y, [&](auto* y) {
      visit_elements(coordinates.z, [&](auto* z) {
        for (const int i : nodes) {
          const Point moved = map(Point{x[i], y[i], z[i]});
          x[i] = static_cast<std::remove_pointer_t<decltype(x)>>(moved.x);
          y[i] = static_cast<std::remove_pointer_t<decltype(y)>>(moved.y);
          z[i] = static_cast<std::remove_pointer_t<decltype(z)>>(moved.z);
        }
      });
    });
  });
}

void apply(const ALE_ACT& act, const Nodes& coordinates, std::span<const int> nodes) {
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

// For each moving region, the volume regions that it moves. A volume belongs to the last moving region that
// names it.
using MovedVolumes = std::vector<std::vector<const VolumeGeometry*>>;

MovedVolumes share_out_volumes(const ALE& ale, const FLDGEO& geo) {
  const VolumeNames volumes(geo.volumes);
  std::vector<char> is_taken(geo.volumes.size());
  MovedVolumes moved(ale.regions.size());
  for (size_t r = ale.regions.size(); r-- > 0;) {
    for (const std::string& name : ale.regions[r].names) {
      const int found = volumes.find(name);
      if (found < 0 || std::exchange(is_taken[static_cast<size_t>(found)], 1) != 0) continue;
      moved[r].push_back(geo.volumes[static_cast<size_t>(found)].get());
    }
  }
  return moved;
}

}  // namespace

// A node moves with the last region that contains it, from its position on entry. So the regions are
// processed last to first and each node is moved once.
void actALE(const ALE& ale, FLDGEO& geo, const long* ele2head) {
  const int nnode = geo.node_count();
  if (nnode == 0 || ale.regions.empty()) return;
  const MovedVolumes moved = share_out_volumes(ale, geo);
  forget_selection();
  std::fill_n(g_mark_node.begin(), nnode, 0);
  bool any_marked = false;
  for (size_t r = moved.size(); r-- > 0;) {
    if (moved[r].empty()) continue;
    const auto visit = [&](auto on_node) {
      for (const VolumeGeometry* volume : moved[r]) {
        for_each_node(*volume, geo.elements.get(), ele2head, nnode, on_node);
      }
    };
    // Scan all marks for the first region (usually the only large one); collect the others directly.
    std::span<const int> nodes;
    if (std::exchange(any_marked, true)) {
      nodes = mark_and_list(visit);
    } else {
      visit([](int node) { g_mark_node[static_cast<size_t>(node)] = 1; });
      nodes = list_marked_nodes(nnode);
    }
    for (const ALE_ACT& act : ale.regions[r].actions) apply(act, *geo.nodes, nodes);
  }
  std::fill_n(g_mark_node.begin(), nnode, 0);
}

}  // namespace fld
