#include "parallel/collectives.h"

#include <numeric>

namespace parallel {

std::vector<std::int64_t> Communicator::gather(std::int64_t own) {
  const auto count = static_cast<std::size_t>(size());
  std::vector<std::int64_t> all(count, own);
  std::vector<std::span<const std::byte>> out(count, std::as_bytes(std::span(&own, 1)));
  std::vector<std::span<std::byte>> in(count);
  for (std::size_t r = 0; r < count; ++r) in[r] = std::as_writable_bytes(std::span(&all[r], 1));
  exchange(out, in);
  return all;
}

Sums sum(Communicator& ranks, std::int64_t own) {
  const std::vector<std::int64_t> all = ranks.gather(own);
  const std::int64_t zero = 0;
  return {std::accumulate(all.begin(), all.begin() + ranks.rank(), zero),
          std::accumulate(all.begin(), all.end(), zero)};
}

std::int64_t smallest(Communicator& ranks, std::int64_t own) {
  const std::vector<std::int64_t> all = ranks.gather(own);
  return *std::min_element(all.begin(), all.end());
}

std::int64_t largest(Communicator& ranks, std::int64_t own) {
  return -smallest(ranks, -own);
}

bool any(Communicator& ranks, bool own) {
  return largest(ranks, own ? 1 : 0) != 0;
}

bool decide(Communicator& ranks, bool own) {
  std::string answer(1, own ? '1' : '0');
  ranks.broadcast(answer);
  return answer == "1";
}

void agree(Communicator& ranks, const std::string& problem) {
  if (ranks.size() == 1) {
    if (!problem.empty()) throw RankError(problem);
    return;
  }
  const std::vector<std::int64_t> lengths = ranks.gather(static_cast<std::int64_t>(problem.size()));
  const auto first =
      std::find_if(lengths.begin(), lengths.end(), [](std::int64_t length) { return length > 0; });
  if (first == lengths.end()) return;
  const int speaker = static_cast<int>(first - lengths.begin());
  std::string text(static_cast<std::size_t>(*first), '\0');
  if (speaker == ranks.rank()) text = problem;
  // From the speaker to every other rank.
  const auto size = static_cast<std::size_t>(ranks.size());
  std::vector<std::span<const std::byte>> out(size);
  std::vector<std::span<std::byte>> in(size);
  const std::string own = text;
  if (speaker == ranks.rank()) {
    std::fill(out.begin(), out.end(), std::as_bytes(std::span(own)));
  } else {
    in[static_cast<std::size_t>(speaker)] = std::as_writable_bytes(std::span(text));
  }
  ranks.exchange(out, in);
  throw RankError("rank " + std::to_string(speaker) + ": " + text);
}

std::int64_t& bytes_sent() {
  thread_local std::int64_t bytes = 0;
  return bytes;
}

}  // namespace parallel
