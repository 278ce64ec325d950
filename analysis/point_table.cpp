#include "analysis/point_table.h"

#include <bit>

namespace analysis {
namespace {

// Both zeros are one number.
std::uint64_t bits(float value) {
  return std::bit_cast<std::uint32_t>(value + 0.0F);
}

std::uint64_t mixed(std::uint64_t hash, std::uint64_t value) {
  constexpr std::uint64_t kFactor = 0x9e3779b97f4a7c15;
  hash = (hash ^ value) * kFactor;
  return hash ^ (hash >> 32);
}

}  // namespace

PointTable::PointTable(const host::Coordinates& nodes)
    : x_(nodes.x()),
      y_(nodes.y()),
      z_(nodes.z()),
      slots_(std::bit_ceil(2 * nodes.size() + 1), kNone),
      next_(nodes.size(), kNone) {
  // From the last node to the first, so that lists begin with the first one.
  for (std::size_t i = nodes.size(); i-- > 0;) {
    std::int32_t& slot = slots_[slot_of(x_[i], y_[i], z_[i])];
    next_[i] = slot;
    slot = static_cast<std::int32_t>(i);
  }
}

bool PointTable::is_at(std::int32_t node, float x, float y, float z) const {
  const auto i = static_cast<std::size_t>(node);
  return bits(x_[i]) == bits(x) && bits(y_[i]) == bits(y) && bits(z_[i]) == bits(z);
}

std::size_t PointTable::slot_of(float x, float y, float z) const {
  const std::size_t mask = slots_.size() - 1;
  std::size_t slot = mixed(mixed(mixed(0, bits(x)), bits(y)), bits(z)) & mask;
  while (slots_[slot] != kNone && !is_at(slots_[slot], x, y, z)) slot = (slot + 1) & mask;
  return slot;
}

std::int32_t PointTable::find(float x, float y, float z) const {
  return slots_[slot_of(x, y, z)];
}

std::vector<std::int32_t> PointTable::find_all(const host::Coordinates& nodes) const {
  std::vector<std::int32_t> found(nodes.size());
  for (std::size_t i = 0; i < found.size(); ++i) found[i] = find(nodes.x()[i], nodes.y()[i], nodes.z()[i]);
  return found;
}

}  // namespace analysis
