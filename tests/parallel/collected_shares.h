// Keeps what the ranks read, and puts their shares of a part together again.
#pragma once

#include <cstdint>
#include <map>
#include <span>
#include <utility>
#include <vector>

#include "parallel/step_reader.h"

namespace parallel_test {

struct Share {
  std::vector<std::uint8_t> codes;
  std::vector<std::int32_t> corners;  // numbers of the share's nodes
  std::vector<std::int32_t> nodes;    // of the region set
  std::int64_t ghosts = 0;            // the last cells, which are of other shares
  std::vector<std::uint8_t> ghost_nodes;
  std::vector<float> points;  // x, y, z each
  std::map<int, std::vector<float>> values;
};

class CollectedShares : public parallel::ShareSink {
 public:
  void set_mesh(int part, parallel::ShareCells cells, const parallel::NodeSet& nodes) override {
    Share& share = shares[part];
    share = {};
    share.codes.assign(cells.codes.span().begin(), cells.codes.span().end());
    share.corners.assign(cells.corners.span().begin(), cells.corners.span().end());
    share.ghosts = cells.ghosts;
    share.ghost_nodes.assign(cells.ghost_nodes.span().begin(), cells.ghost_nodes.span().end());
    for (const parallel::Run run : nodes.runs) {
      for (std::int32_t i = 0; i < run.count; ++i) share.nodes.push_back(run.first + i);
    }
    ++meshes_made;
  }
  void set_points(int part, parallel::Array<float> points) override {
    shares.at(part).points.assign(points.span().begin(), points.span().end());
    ++points_made;
  }
  void set_values(int part, int variable, int /*components*/, parallel::Array<float> values) override {
    shares.at(part).values[variable].assign(values.span().begin(), values.span().end());
    ++values_made;
  }
  void drop_values(int part, int variable) override { shares.at(part).values.erase(variable); }
  void drop_part(int part) override { shares.erase(part); }

  std::map<int, Share> shares;  // by part
  int meshes_made = 0;
  int points_made = 0;
  int values_made = 0;
};

struct MergedCell {
  int code = 0;
  std::vector<std::int32_t> nodes;  // of the region set
  float material = 0;
};

// The values of a variable at the nodes of a part, `width` each.
struct MergedValues {
  std::size_t width = 0;
  std::vector<float> values;

  std::span<const float> at(std::size_t node) const { return {values.data() + width * node, width}; }
};

struct MergedPart {
  std::vector<MergedCell> cells;    // in the file's order
  std::vector<std::int32_t> nodes;  // of the region set, ascending
  MergedValues points;
  std::map<int, MergedValues> values;  // by variable
};

// Puts the ranks' own cells of a part together; `material` is the number of that variable. What two ranks
// have of one node has to agree; `agrees` becomes whether it does.
MergedPart merge(const std::vector<const Share*>& shares, int material, bool& agrees);

}  // namespace parallel_test
