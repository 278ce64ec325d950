#include "reader/motion.h"

#include <algorithm>
#include <cstring>
#include <span>
#include <vector>

#include "reader/affine_motion.h"
#include "reader/node_selection.h"
#include "reader/region_walk.h"
#include "reader/work_tables.h"

namespace fld {

namespace {

// A copy of one coordinate array, in its own precision.
class SavedAxis {
 public:
  SavedAxis(const VFPA& axis, int n) : bytes_(static_cast<size_t>(axis.precision) * static_cast<size_t>(n)) {
    if (!bytes_.empty()) memcpy(bytes_.data(), axis.data, bytes_.size());
  }

  // Puts the values of `nodes` back into the array.
  void restore(const VFPA& axis, std::span<const int> nodes) const {
    visit_elements(axis, [&](auto* values) {
      constexpr size_t kWidth = sizeof *values;
      for (const int node : nodes) memcpy(&values[node], &bytes_[static_cast<size_t>(node) * kWidth], kWidth);
    });
  }

 private:
  std::vector<char> bytes_;
};

// Applies `map` to the coordinates of `nodes`, each read as double and rounded to its array's precision.
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

// The first volume region whose name is a prefix of `name`; null when there is none.
const VolumeGeometry* find_volume(const FLDGEO& geo, const std::string& name) {
  const auto found = std::find_if(geo.volumes.begin(), geo.volumes.end(),
                                  [&](const auto& volume) { return name.starts_with(volume->name); });
  return found == geo.volumes.end() ? nullptr : found->get();
}

void clear_all_marks() {
  std::fill(g_mark_node.begin(), g_mark_node.end(), 0);
}

// Marks and lists the nodes of all volume regions that the moving region names.
std::span<const int> moving_nodes(const ALE_REGION& region, const FLDGEO& geo, const long* ele2head) {
  clear_all_marks();
  const int nnode = geo.node_count();
  for (const std::string& name : region.names) {
    const VolumeGeometry* volume = find_volume(geo, name);
    if (volume == nullptr) continue;
    for_each_node(*volume, geo.elements.get(), ele2head, nnode,
                  [](int node) { g_mark_node[static_cast<size_t>(node)] = 1; });
  }
  return list_marked_nodes(nnode);
}

}  // namespace

void actALE(const ALE& ale, FLDGEO& geo, const long* ele2head) {
  const int nnode = geo.node_count();
  if (nnode == 0 || ale.regions.empty()) return;
  const Nodes& coordinates = *geo.nodes;
  forget_selection();
  const VFPA* const axes[] = {&coordinates.x, &coordinates.y, &coordinates.z};
  // A single region finds the entry coordinates in place; only further ones may meet nodes that were moved
  // already.
  std::vector<SavedAxis> entry;
  if (ale.regions.size() > 1) {
    for (const VFPA* axis : axes) entry.emplace_back(*axis, nnode);
  }
  for (const ALE_REGION& region : ale.regions) {
    const auto nodes = moving_nodes(region, geo, ele2head);
    for (size_t axis = 0; axis < entry.size(); ++axis) entry[axis].restore(*axes[axis], nodes);
    for (const ALE_ACT& act : region.actions) apply(act, coordinates, nodes);
  }
  clear_all_marks();
}

}  // namespace fld
