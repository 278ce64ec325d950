#include "parallel/node_set.h"

#include <algorithm>
#include <bit>
#include <limits>

namespace parallel {
namespace {

// One bit per node of a range, and how many bits are set before each word.
class NodeBits {
 public:
  NodeBits(std::int64_t smallest, std::int64_t largest)
      : smallest_(smallest), words_(static_cast<std::size_t>((largest - smallest) / 64 + 1)) {}

  void set(std::int32_t node) {
    const auto bit = static_cast<std::uint64_t>(node - smallest_);
    words_[bit / 64] |= std::uint64_t{1} << (bit % 64);
  }
  void set(Run run) {
    for (std::int64_t node = run.first; node < std::int64_t{run.first} + run.count; ++node)
      set(static_cast<std::int32_t>(node));
  }
  void count() {
    before_.resize(words_.size());
    std::uint32_t sum = 0;
    for (std::size_t w = 0; w < words_.size(); ++w) {
      before_[w] = sum;
      sum += static_cast<std::uint32_t>(std::popcount(words_[w]));
    }
  }
  std::int32_t number_of(std::int32_t node) const {
    const auto bit = static_cast<std::uint64_t>(node - smallest_);
    const std::uint64_t below = words_[bit / 64] & ((std::uint64_t{1} << (bit % 64)) - 1);
    return static_cast<std::int32_t>(before_[bit / 64] + static_cast<std::uint32_t>(std::popcount(below)));
  }
  NodeSet runs() const {
    NodeSet set;
    for (std::size_t w = 0; w < words_.size(); ++w) {
      const std::int64_t begin = smallest_ + static_cast<std::int64_t>(w) * 64;
      for (std::uint64_t word = words_[w]; word != 0;) {
        const int first = std::countr_zero(word);
        const int length = std::countr_one(word >> first);
        append(set, begin + first, length);
        word = first + length == 64 ? 0 : word >> (first + length) << (first + length);
      }
    }
    return set;
  }

 private:
  static void append(NodeSet& set, std::int64_t first, int length) {
    set.count += length;
    if (!set.runs.empty() && std::int64_t{set.runs.back().first} + set.runs.back().count == first) {
      set.runs.back().count += length;
    } else {
      set.runs.push_back({static_cast<std::int32_t>(first), length});
    }
  }

  std::int64_t smallest_;
  std::vector<std::uint64_t> words_;
  std::vector<std::uint32_t> before_;
};

}  // namespace

NodeSet NodeSet::whole(std::int32_t nodes) {
  NodeSet set;
  if (nodes > 0) set = {{{0, nodes}}, nodes};
  return set;
}

NodeSet nodes_of(std::span<const std::int32_t> corners) {
  std::int32_t smallest = std::numeric_limits<std::int32_t>::max();
  std::int32_t largest = kNoNode;
  for (const std::int32_t node : corners) {
    // As an unsigned number, kNoNode is larger than every node.
    smallest = static_cast<std::int32_t>(
        std::min(static_cast<std::uint32_t>(smallest), static_cast<std::uint32_t>(node)));
    largest = std::max(largest, node);
  }
  if (largest == kNoNode) return {};
  NodeBits bits(smallest, largest);
  for (const std::int32_t node : corners) {
    if (node != kNoNode) bits.set(node);
  }
  return bits.runs();
}

void number_corners(const NodeSet& nodes, std::span<std::int32_t> corners) {
  if (nodes.runs.size() <= 1) {
    const std::int32_t first = nodes.first();
    if (first <= 0) return;
    for (std::int32_t& node : corners) node -= first;
    return;
  }
  const Run last = nodes.runs.back();
  NodeBits bits(nodes.first(), std::int64_t{last.first} + last.count - 1);
  for (const Run run : nodes.runs) bits.set(run);
  bits.count();
  for (std::int32_t& node : corners) node = bits.number_of(node);
}

}  // namespace parallel
