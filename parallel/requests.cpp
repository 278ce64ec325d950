#include "parallel/requests.h"

namespace parallel {
namespace {

// Runs, each for one rank, put into parcels.
Parcels<Run> parcels_of(int ranks, const std::vector<std::pair<int, Run>>& runs) {
  Parcels<Run> parcels;
  parcels.counts.assign(static_cast<std::size_t>(ranks), 0);
  for (const auto& [rank, run] : runs) ++parcels.counts[static_cast<std::size_t>(rank)];
  std::vector<std::int64_t> next(parcels.counts.size());
  for (int r = 0; r < ranks; ++r) next[static_cast<std::size_t>(r)] = parcels.begin_of(r);
  parcels.values = Array<Run>(static_cast<std::int64_t>(runs.size()));
  for (const auto& [rank, run] : runs) parcels.values[next[static_cast<std::size_t>(rank)]++] = run;
  return parcels;
}

}  // namespace

ListRequest::ListRequest(Communicator& ranks, const Partition& partition, const ListRuns& list) {
  Parcels<Run> wanted;
  together(ranks, [&] {
    std::vector<std::pair<int, Run>> runs;
    for (const ListRun& each : list.runs()) {
      count_ += each.run.count;
      if (!each.exists) {
        pieces_.push_back({kNobody, each.run.count});
        continue;
      }
      for_each_owned(partition, each.run, [&](int owner, Run run) {
        runs.emplace_back(owner, run);
        pieces_.push_back({owner, run.count});
      });
    }
    wanted = parcels_of(ranks.size(), runs);
  });
  asked_ = deliver(ranks, std::move(wanted));
}

bool ListRequest::is_in_order() const {
  int owner = 0;
  for (const Piece& piece : pieces_) {
    if (piece.owner < owner) return false;
    owner = piece.owner;
  }
  return true;
}

std::int64_t ListRequest::asked_of(int rank) const {
  const std::int64_t begin = asked_.begin_of(rank);
  std::int64_t elements = 0;
  for (std::int64_t i = begin; i < begin + asked_.counts[static_cast<std::size_t>(rank)]; ++i)
    elements += asked_.values[i].count;
  return elements;
}

NodeRequest::NodeRequest(Communicator& ranks, const Partition& partition, const std::vector<Run>& nodes)
    : own_first_(partition.of(ranks.rank()).first) {
  Parcels<Run> wanted;
  together(ranks, [&] {
    std::vector<std::pair<int, Run>> runs;
    for (const Run run : nodes) {
      for_each_owned(partition, run, [&](int owner, Run piece) { runs.emplace_back(owner, piece); });
    }
    wanted = parcels_of(ranks.size(), runs);
  });
  asked_ = deliver(ranks, std::move(wanted));
}

Array<float> NodeRequest::fetch(Communicator& ranks, Array<float>& owned, int width, bool is_last) const {
  if (is_last && ranks.size() == 1 && asked_.values.size() == 1 &&
      std::int64_t{asked_.values[0].count} * width == owned.size()) {
    return std::move(owned);
  }
  Parcels<float> sent;
  together(ranks, [&] {
    std::int64_t total = 0;
    std::int64_t i = 0;
    for (const std::int64_t runs : asked_.counts) {
      std::int64_t values = 0;
      for (const std::int64_t end = i + runs; i < end; ++i)
        values += std::int64_t{asked_.values[i].count} * width;
      sent.counts.push_back(values);
      total += values;
    }
    sent.values = Array<float>(total);
    float* to = sent.values.data();
    for (const Run run : asked_.values.span()) {
      to = std::copy_n(owned.data() + (run.first - own_first_) * width, std::int64_t{run.count} * width, to);
    }
  });
  if (is_last) owned = {};
  return std::move(deliver(ranks, std::move(sent)).values);
}

}  // namespace parallel
