// Asks the owners of an array's elements for some of them, and hands out what others ask for.
#pragma once

#include <algorithm>
#include <cstdint>
#include <utility>
#include <vector>

#include "parallel/collectives.h"
#include "parallel/partition.h"

namespace parallel {

// A run of a list in which elements may be named that do not exist: `exists` says whether these do.
struct ListRun {
  Run run;
  bool exists = true;
};

// Element numbers as runs: those that follow each other, and those outside 0 to `elements` - 1 together.
class ListRuns {
 public:
  explicit ListRuns(std::int64_t elements) : elements_(elements) {}

  void add(std::int32_t element) {
    const bool exists = element >= 0 && element < elements_;
    if (!runs_.empty() && runs_.back().exists == exists) {
      Run& last = runs_.back().run;
      if (!exists || std::int64_t{last.first} + last.count == element) {
        ++last.count;
        return;
      }
    }
    runs_.push_back({{element, 1}, exists});
  }
  void add(Run run) { runs_.push_back({run, true}); }

  const std::vector<ListRun>& runs() const { return runs_; }
  // Entries of the list.
  std::int64_t count() const {
    std::int64_t count = 0;
    for (const ListRun& each : runs_) count += each.run.count;
    return count;
  }

 private:
  std::int64_t elements_;
  std::vector<ListRun> runs_;
};

// The elements of a list, which their owners were told of.
class ListRequest {
 public:
  // Collective. `list` is this rank's; it may be another one on each rank.
  ListRequest(Communicator& ranks, const Partition& partition, const ListRuns& list);

  // What the ranks ask this one for: runs within its own stretch of the partition, by rank.
  const Parcels<Run>& asked() const { return asked_; }
  std::int64_t asked_of(int rank) const;

  // Puts the answers into the order of the list. `sent` has for each rank `width` values per element that it
  // asked for. Elements that do not exist get `missing`. Collective.
  template <typename Value>
  Array<Value> answer(Communicator& ranks, Parcels<Value> sent, int width, Value missing) const;
  // The same where every element has its own number of values: `width_of[i]` of the list's i-th.
  template <typename Value, typename Width>
  Array<Value> answer(Communicator& ranks, Parcels<Value> sent, const Array<Width>& width_of) const;

 private:
  static constexpr int kNobody = -1;

  // What one owner, or nobody, gives of the list in one go.
  struct Piece {
    int owner = kNobody;
    std::int32_t count = 0;
  };
  // Whether what comes in the order of the ranks is in the order of the list.
  bool is_in_order() const;

  Parcels<Run> asked_;
  std::vector<Piece> pieces_;
  std::int64_t count_ = 0;
};

template <typename Value>
Array<Value> ListRequest::answer(Communicator& ranks, Parcels<Value> sent, int width, Value missing) const {
  Parcels<Value> received = deliver(ranks, std::move(sent));
  Array<Value> ordered;
  together(ranks, [&] {
    if (is_in_order()) {
      ordered = std::move(received.values);
      return;
    }
    ordered = Array<Value>(count_ * width);
    std::vector<std::int64_t> next(received.counts.size());
    for (std::size_t r = 0; r < next.size(); ++r) next[r] = received.begin_of(static_cast<int>(r));
    Value* to = ordered.data();
    for (const Piece& piece : pieces_) {
      const std::int64_t values = std::int64_t{piece.count} * width;
      if (piece.owner == kNobody) {
        to = std::fill_n(to, values, missing);
      } else {
        std::int64_t& from = next[static_cast<std::size_t>(piece.owner)];
        to = std::copy_n(received.values.data() + from, values, to);
        from += values;
      }
    }
  });
  return ordered;
}

template <typename Value, typename Width>
Array<Value> ListRequest::answer(Communicator& ranks, Parcels<Value> sent,
                                 const Array<Width>& width_of) const {
  Parcels<Value> received = deliver(ranks, std::move(sent));
  Array<Value> ordered;
  together(ranks, [&] {
    if (is_in_order()) {
      ordered = std::move(received.values);
      return;
    }
    ordered = Array<Value>(received.values.size());
    std::vector<std::int64_t> next(received.counts.size());
    for (std::size_t r = 0; r < next.size(); ++r) next[r] = received.begin_of(static_cast<int>(r));
    Value* to = ordered.data();
    std::int64_t entry = 0;
    for (const Piece& piece : pieces_) {
      std::int64_t values = 0;
      for (std::int32_t i = 0; i < piece.count; ++i) values += width_of[entry++];
      if (piece.owner == kNobody) continue;
      std::int64_t& from = next[static_cast<std::size_t>(piece.owner)];
      to = std::copy_n(received.values.data() + from, values, to);
      from += values;
    }
  });
  return ordered;
}

// The nodes of a share, which their owners were told of and remember.
class NodeRequest {
 public:
  NodeRequest() = default;
  // Collective.
  NodeRequest(Communicator& ranks, const Partition& partition, const std::vector<Run>& nodes);

  // The values of this rank's nodes in ascending order, `width` each; `owned` are those of the rank's own
  // stretch of the partition, which with `is_last` are needed no more and may be gone afterwards. Collective.
  Array<float> fetch(Communicator& ranks, Array<float>& owned, int width, bool is_last) const;

  // Runs within this rank's stretch that rank `rank` asked for are asked().
  const Parcels<Run>& asked() const { return asked_; }

 private:
  std::int64_t own_first_ = 0;
  Parcels<Run> asked_;
};

}  // namespace parallel
