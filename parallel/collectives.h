// Sums, agreements and parcels over the ranks of a process group. Collective, all of them.
#pragma once

#include <algorithm>
#include <cstring>
#include <exception>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "parallel/array.h"
#include "parallel/communicator.h"

namespace parallel {

// What went wrong on one rank, thrown on all of them alike.
class RankError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// The sum over the ranks before this one, and over all of them.
struct Sums {
  std::int64_t before = 0;
  std::int64_t all = 0;
};
Sums sum(Communicator& ranks, std::int64_t own);
std::int64_t smallest(Communicator& ranks, std::int64_t own);
std::int64_t largest(Communicator& ranks, std::int64_t own);
bool any(Communicator& ranks, bool own);
// Rank 0's answer.
bool decide(Communicator& ranks, bool own);

// Returns when no rank has a problem; an empty text is none. Else throws a RankError with the first rank's
// problem, and which rank that is when there are more.
void agree(Communicator& ranks, const std::string& problem);

// Does work of this rank's own, in which nothing is collective, and agrees on how it went.
template <typename Work>
void together(Communicator& ranks, Work work) {
  std::string problem;
  try {
    work();
  } catch (const std::bad_alloc&) {
    problem = "there is not enough memory";
  } catch (const std::exception& error) {
    problem = error.what();
    if (problem.empty()) problem = "unknown error";
  }
  agree(ranks, problem);
}

// Values for each rank, or from each, one rank's behind the other's.
template <typename Value>
struct Parcels {
  Array<Value> values;
  std::vector<std::int64_t> counts;  // by rank

  std::int64_t begin_of(int rank) const {
    std::int64_t begin = 0;
    for (int r = 0; r < rank; ++r) begin += counts[static_cast<std::size_t>(r)];
    return begin;
  }
};

// The bytes that were sent to other ranks by these functions, of this thread.
std::int64_t& bytes_sent();

// Brings each rank its parcel. In a process of its own nothing is copied.
template <typename Value>
Parcels<Value> deliver(Communicator& ranks, Parcels<Value> sent) {
  if (ranks.size() == 1) return sent;
  const auto size = static_cast<std::size_t>(ranks.size());
  const auto own = static_cast<std::size_t>(ranks.rank());
  Parcels<Value> received;
  received.counts.resize(size);
  std::vector<std::span<const std::byte>> out(size);
  std::vector<std::span<std::byte>> in(size);
  for (std::size_t r = 0; r < size; ++r) {
    out[r] = std::as_bytes(std::span(&sent.counts[r], 1));
    in[r] = std::as_writable_bytes(std::span(&received.counts[r], 1));
  }
  ranks.exchange(out, in);
  received.counts[own] = sent.counts[own];
  together(ranks, [&] { received.values = Array<Value>(received.begin_of(ranks.size())); });
  std::int64_t sent_begin = 0;
  std::int64_t received_begin = 0;
  for (std::size_t r = 0; r < size; ++r) {
    const auto parcel =
        std::span<const Value>(sent.values.data() + sent_begin, static_cast<std::size_t>(sent.counts[r]));
    const auto room = std::span<Value>(received.values.data() + received_begin,
                                       static_cast<std::size_t>(received.counts[r]));
    out[r] = std::as_bytes(parcel);
    in[r] = std::as_writable_bytes(room);
    if (r == own) {
      std::copy(parcel.begin(), parcel.end(), room.begin());
    } else {
      bytes_sent() += static_cast<std::int64_t>(parcel.size_bytes());
    }
    sent_begin += sent.counts[r];
    received_begin += received.counts[r];
  }
  ranks.exchange(out, in);
  return received;
}

}  // namespace parallel
