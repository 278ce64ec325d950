// Cells of other ranks around a share, for filters that need the neighbours of its cells.
#pragma once

#include <cstdint>
#include <vector>

#include "parallel/collectives.h"
#include "parallel/node_set.h"

namespace parallel {

class GhostCells {
 public:
  GhostCells() = default;
  // Puts behind the rank's own cells, by their type codes and the nodes of the region set at their corners,
  // the cells of other ranks that have a node in common with them: one layer. A second one has a node in
  // common with the first, and so on. `nodes` says who keeps what is known of a node. Collective.
  GhostCells(Communicator& ranks, const Partition& nodes, int layers, Array<std::uint8_t>& codes,
             Array<std::int32_t>& corners);

  // How many cells were put there.
  std::int64_t count() const { return count_; }
  // 1 for each node of `all`, the nodes of own and other cells, that another rank has to count: one that own
  // cells do not use, or that a rank before this one uses. Of the ranks that have a node one counts it.
  Array<std::uint8_t> ghost_nodes(const NodeSet& all) const;
  // Puts behind the values of the own cells, one each, those of the others. Collective.
  Array<float> extend(Communicator& ranks, Array<float> own) const;

 private:
  // The own cells that a layer brings to each rank, by their numbers from 0.
  using Layer = Parcels<std::int32_t>;

  std::vector<Layer> layers_;
  std::int64_t count_ = 0;
  NodeSet own_nodes_;
  std::vector<std::int32_t> nodes_of_others_;  // own nodes that ranks before this one use, ascending
};

}  // namespace parallel
