#include "analysis/rigid_motion.h"

#include <algorithm>
#include <cmath>

namespace analysis {
namespace {

Vec3 node_at(const host::Coordinates& nodes, std::size_t node) {
  return {static_cast<double>(nodes.x()[node]), static_cast<double>(nodes.y()[node]),
          static_cast<double>(nodes.z()[node])};
}

// How far from the origin the nodes reach.
double reach_of(const host::Coordinates& nodes) {
  double reach = 0;
  for (std::size_t i = 0; i < nodes.size(); ++i) reach = std::max(reach, length(node_at(nodes, i)));
  return reach;
}

}  // namespace

MeshShape::MeshShape(const host::Coordinates& nodes) : nodes_(nodes.size()) {
  constexpr std::size_t kCorners = 4;  // fix a point in space, and on which side it is
  if (nodes.size() == 0) return;
  corners_.push_back(0);
  // The next one is the node whose nearest corner is farthest away.
  std::vector<double> nearest(nodes.size());
  for (std::size_t i = 0; i < nodes.size(); ++i) nearest[i] = length(node_at(nodes, i) - node_at(nodes, 0));
  while (corners_.size() < std::min(kCorners, nodes.size())) {
    const auto farthest =
        static_cast<std::size_t>(std::max_element(nearest.begin(), nearest.end()) - nearest.begin());
    corners_.push_back(farthest);
    const Vec3 corner = node_at(nodes, farthest);
    for (std::size_t i = 0; i < nodes.size(); ++i)
      nearest[i] = std::min(nearest[i], length(node_at(nodes, i) - corner));
  }
  distances_ = distances_from_corners(nodes);
}

std::vector<double> MeshShape::distances_from_corners(const host::Coordinates& nodes) const {
  std::vector<double> distances;
  distances.reserve(corners_.size() * nodes.size());
  for (const std::size_t corner : corners_) {
    const Vec3 from = node_at(nodes, corner);
    for (std::size_t i = 0; i < nodes.size(); ++i) distances.push_back(length(node_at(nodes, i) - from));
  }
  return distances;
}

bool MeshShape::is_kept_by(const host::Coordinates& nodes) const {
  if (nodes.size() != nodes_) return false;
  const std::vector<double> distances = distances_from_corners(nodes);
  const double tolerance = kTolerance * reach_of(nodes);
  for (std::size_t i = 0; i < distances.size(); ++i) {
    if (!(std::abs(distances[i] - distances_[i]) <= tolerance)) return false;
  }
  return true;
}

}  // namespace analysis
