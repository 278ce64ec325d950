// Whether a mesh has moved rigidly.
#pragma once

#include <array>
#include <cstddef>
#include <vector>

#include "analysis/vec3.h"
#include "host/dataset.h"

namespace analysis {

// The shape of a mesh: the distances of its nodes from a few of them, which a rigid motion keeps.
class MeshShape {
 public:
  explicit MeshShape(const host::Coordinates& nodes);

  // Whether these are the same nodes, turned and shifted. Distances may differ by kTolerance times the size
  // of the mesh and its distance from the origin: coordinates in single precision are not more exact.
  bool is_kept_by(const host::Coordinates& nodes) const;

  static constexpr double kTolerance = 1e-5;

 private:
  std::vector<double> distances_from_corners(const host::Coordinates& nodes) const;

  std::size_t nodes_;                 // how many
  std::vector<std::size_t> corners_;  // up to four nodes, as far apart as can be found in one pass each
  std::vector<double> distances_;     // of each node from each of them
};

}  // namespace analysis
