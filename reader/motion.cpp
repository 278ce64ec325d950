#include "reader/motion.h"

#include <algorithm>
#include <span>
#include <string_view>
#include <utility>
#include <vector>

#include "dataset/node_motion.h"
#include "dataset/volume_names.h"
#include "reader/node_selection.h"
#include "reader/region_walk.h"
#include "reader/work_tables.h"

namespace fld {

namespace {

// For each moving region, the volume regions that it moves. A volume belongs to the last moving region that
// names it.
using MovedVolumes = std::vector<std::vector<const VolumeGeometry*>>;

MovedVolumes moved_volumes(const ALE& ale, const FLDGEO& geo) {
  std::vector<std::string_view> names;
  names.reserve(geo.volumes.size());
  for (const auto& volume : geo.volumes) names.emplace_back(volume->name);
  const std::vector<std::vector<int>> indices = share_out_volumes(ale, names);
  MovedVolumes moved(indices.size());
  for (size_t r = 0; r < indices.size(); ++r) {
    for (const int index : indices[r]) moved[r].push_back(geo.volumes[static_cast<size_t>(index)].get());
  }
  return moved;
}

}  // namespace

// A node moves with the last region that contains it, from its position on entry. So the regions are
// processed last to first and each node is moved once.
void actALE(const ALE& ale, FLDGEO& geo, const long* ele2head) {
  const int nnode = geo.node_count();
  if (nnode == 0 || ale.regions.empty()) return;
  const MovedVolumes moved = moved_volumes(ale, geo);
  forget_selection();
  std::fill_n(g_mark_node.begin(), nnode, 0);
  bool any_marked = false;
  for (size_t r = moved.size(); r-- > 0;) {
    if (moved[r].empty()) continue;
    const Elements* const elements = geo.elements.get();
    // Scan all marks for the first region (usually the only large one); collect the others directly.
    std::span<const int> nodes;
    if (std::exchange(any_marked, true)) {
      nodes = mark_and_list([&](auto on_node) {
        for (const VolumeGeometry* volume : moved[r])
          for_each_node(*volume, elements, ele2head, 0, volume->nelem, nnode, on_node);
      });
    } else {
      for (const VolumeGeometry* volume : moved[r])
        mark_nodes(*volume, elements, ele2head, nnode, g_mark_node.data());
      nodes = list_marked_nodes(nnode);
    }
    for (const ALE_ACT& act : ale.regions[r].actions)
      move_nodes(act, geo.nodes->x, geo.nodes->y, geo.nodes->z, nodes);
  }
  std::fill_n(g_mark_node.begin(), nnode, 0);
}

}  // namespace fld
