// What a rank owns of a region set's values per node: coordinates, moved where the step says so, and the
// values of quantities.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "layout/step_layout.h"
#include "parallel/base_coordinates.h"
#include "parallel/mesh_blocks.h"

namespace parallel {

// For each of the mesh's moving volumes the own nodes (from 0 in the rank's stretch) that it moves. A node
// that more than one has belongs to the last of them.
using MovedNodes = std::vector<std::vector<std::int32_t>>;

// Asks the owners of the moving volumes' elements for their nodes. Collective.
MovedNodes find_moved_nodes(Communicator& ranks, FileArrays& files, const layout::SetMesh& mesh,
                            ElementBlock& elements);

// The coordinates of the own nodes at the step: x, y and z of each, Cartesian. With `kept`, those that a
// motion starts from are kept there, and taken from there if they are the mesh's. Collective.
Array<float> read_coordinates(Communicator& ranks, FileArrays& files, const layout::SetMesh& mesh,
                              const MovedNodes& moved, std::optional<BaseCoordinates>* kept = nullptr);

// The values of the own nodes, `components` each; NaN where one is undefined or missing. Collective.
Array<float> read_values(Communicator& ranks, FileArrays& files, const layout::SetMesh& mesh,
                         const layout::SetValues& values, int components);

}  // namespace parallel
