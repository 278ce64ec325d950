// The nodes that a rank's share of a part uses, and their numbers within the share.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "parallel/partition.h"

namespace parallel {

// In the place of a node that the mesh does not have.
inline constexpr std::int32_t kNoNode = -1;

// Ascending nodes of a region set, as runs.
struct NodeSet {
  std::vector<Run> runs;
  std::int64_t count = 0;

  // All nodes of a mesh.
  static NodeSet whole(std::int32_t nodes);
  // The smallest node; kNoNode without nodes.
  std::int32_t first() const { return runs.empty() ? kNoNode : runs.front().first; }
};

// The nodes among `corners`, each once; kNoNode is none.
NodeSet nodes_of(std::span<const std::int32_t> corners);

// Replaces each node by its number (from 0) within the set, which has them all.
void number_corners(const NodeSet& nodes, std::span<std::int32_t> corners);

}  // namespace parallel
