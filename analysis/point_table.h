// Finds points by their coordinates, which have to be the same numbers.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "host/dataset.h"

namespace analysis {

// The nodes of a part, to find those of another part of the same step that are at the same places. A reader
// gives equal coordinates for a node in all parts, and so are they for nodes of two meshes that touch.
class PointTable {
 public:
  static constexpr std::int32_t kNone = -1;

  // The coordinates must outlive the table. Nodes are counted from 0 here.
  explicit PointTable(const host::Coordinates& nodes);

  // The first node at this place; kNone without one.
  std::int32_t find(float x, float y, float z) const;

  // The node after this one at the same place; kNone at the end.
  std::int32_t next(std::int32_t node) const { return next_[static_cast<std::size_t>(node)]; }

  // For each of these nodes the first node of the table at its place, or kNone.
  std::vector<std::int32_t> find_all(const host::Coordinates& nodes) const;

 private:
  std::size_t slot_of(float x, float y, float z) const;
  bool is_at(std::int32_t node, float x, float y, float z) const;

  std::span<const float> x_;
  std::span<const float> y_;
  std::span<const float> z_;
  std::vector<std::int32_t> slots_;  // open addressing: the first node of a place; kNone where free
  std::vector<std::int32_t> next_;
};

}  // namespace analysis
