// How an array is shared out: in stretches that are as equal as can be, in the order of the ranks.
#pragma once

#include <cstdint>
#include <vector>

namespace parallel {

// The elements first to last - 1.
struct Stretch {
  std::int64_t first = 0;
  std::int64_t last = 0;

  bool operator==(const Stretch&) const = default;
  std::int64_t size() const { return last - first; }
};

// Elements first to first + count - 1, by 32-bit numbers.
struct Run {
  std::int32_t first = 0;
  std::int32_t count = 0;

  bool operator==(const Run&) const = default;
};

class Partition {
 public:
  Partition() = default;
  Partition(std::int64_t elements, int owners) : elements_(elements), owners_(owners) {}

  std::int64_t elements() const { return elements_; }
  Stretch of(int owner) const { return {begin_of(owner), begin_of(owner + 1)}; }
  // Of an element that there is.
  int owner_of(std::int64_t element) const {
    return static_cast<int>((static_cast<Wide>(element + 1) * owners_ - 1) / elements_);
  }

 private:
  // Elements may be beyond 2^50 and owners thousands.
  __extension__ using Wide = __int128;

  std::int64_t begin_of(int owner) const {
    return static_cast<std::int64_t>(static_cast<Wide>(elements_) * owner / owners_);
  }

  std::int64_t elements_ = 0;
  int owners_ = 1;
};

// Calls visit(owner, run) for the pieces that the owners have of a run whose elements all exist, in order.
template <typename Visit>
void for_each_owned(const Partition& partition, Run run, Visit visit) {
  std::int64_t first = run.first;
  const std::int64_t last = first + run.count;
  while (first < last) {
    const int owner = partition.owner_of(first);
    const std::int64_t end = partition.of(owner).last < last ? partition.of(owner).last : last;
    visit(owner, Run{static_cast<std::int32_t>(first), static_cast<std::int32_t>(end - first)});
    first = end;
  }
}

}  // namespace parallel
