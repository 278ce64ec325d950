// A rank's share of a part: a stretch of its cells, in the file's order, and the nodes that they use.
#pragma once

#include <cstdint>
#include <optional>

#include "layout/step_layout.h"
#include "parallel/ghost_cells.h"
#include "parallel/mesh_blocks.h"
#include "parallel/node_set.h"

namespace parallel {

// Which share: one per rank, or, in a process of its own, any piece of as many as are asked for.
struct ShareNumber {
  int index = 0;
  int count = 1;
  int ghost_layers = 0;  // of cells of other ranks around the share; none in a process of its own

  bool operator==(const ShareNumber&) const = default;
};

struct ShareCells {
  Array<std::uint8_t> codes;    // type codes of the file, of elements or of faces
  Array<std::int32_t> corners;  // numbers of the share's nodes from 0, cell after cell, in the file's order
  std::int64_t ghosts = 0;      // how many of the cells, the last ones, are of other shares
  Array<std::uint8_t> ghost_nodes;  // where there may be such: 1 for each node that another share counts
};

struct PartShare {
  ShareCells cells;
  NodeSet nodes;
  // The type code of each entry of the part's list, or 0 where it is no cell. Empty when all are cells that
  // can have a material.
  Array<std::uint8_t> entry_codes;
  // Of a volume: the numbers of its elements, where they take little room. Else its list is read once more
  // for materials.
  std::optional<ListRuns> elements;
  GhostCells ghosts;
};

// The entries of the part's list that are in the share.
Stretch entries_of_share(const layout::SetMesh& mesh, const layout::PartLists& part, ShareNumber share);

// Makes the share of this rank. `elements` is asked for but for surfaces, and with `is_last` for the last
// time. Collective.
PartShare make_share(Communicator& ranks, FileArrays& files, const layout::SetMesh& mesh,
                     const layout::PartLists& part, ShareNumber share, ElementBlock* elements, bool is_last);

// The materials of the share's own cells, of which make_share told `entry_codes` and `elements`. Collective.
Array<float> share_materials(Communicator& ranks, FileArrays& files, const layout::SetMesh& mesh,
                             const layout::PartLists& part, ShareNumber share,
                             const Array<std::uint8_t>& entry_codes, const std::optional<ListRuns>& elements,
                             const MaterialBlock& materials);

}  // namespace parallel
