// What the ranks of a process group need to work together. Every call is collective: all ranks make the same
// calls in the same order.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace parallel {

class Communicator {
 public:
  Communicator() = default;
  Communicator(const Communicator&) = delete;
  Communicator& operator=(const Communicator&) = delete;
  virtual ~Communicator() = default;

  virtual int rank() const = 0;
  virtual int size() const = 0;

  // Brings rank 0's bytes to all ranks.
  virtual void broadcast(std::string& bytes) = 0;
  // Sends out[r] to rank r and receives in[r] from it, for every other rank. The sizes of what one rank sends
  // and the other receives agree. What a rank has for itself is left to the caller.
  virtual void exchange(const std::vector<std::span<const std::byte>>& out,
                        const std::vector<std::span<std::byte>>& in) = 0;
  // What each rank gives, by rank. By way of exchange where the group has no better one.
  virtual std::vector<std::int64_t> gather(std::int64_t own);
};

// A process of its own.
class SingleProcess : public Communicator {
 public:
  int rank() const override { return 0; }
  int size() const override { return 1; }
  void broadcast(std::string& /*bytes*/) override {}
  void exchange(const std::vector<std::span<const std::byte>>& /*out*/,
                const std::vector<std::span<std::byte>>& /*in*/) override {}
};

}  // namespace parallel
