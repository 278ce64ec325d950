// A process group whose ranks are threads of this process.
#pragma once

#include <condition_variable>
#include <cstring>
#include <functional>
#include <mutex>
#include <thread>
#include <vector>

#include "parallel/communicator.h"

namespace parallel_test {

class ThreadGroup {
 public:
  explicit ThreadGroup(int size) : size_(size), barrier_(size), sent_(static_cast<std::size_t>(size)) {}

  // Runs `work` on every rank, each in a thread of its own, and comes back when all are done.
  void run(const std::function<void(parallel::Communicator&)>& work) {
    std::vector<std::thread> threads;
    for (int r = 0; r < size_; ++r) {
      threads.emplace_back([this, r, &work] {
        Rank rank(*this, r);
        work(rank);
      });
    }
    for (std::thread& thread : threads) thread.join();
  }

 private:
  using Sent = std::vector<std::span<const std::byte>>;

  // Threads that sleep while they wait: there are more of them than processors.
  class Barrier {
   public:
    explicit Barrier(int size) : size_(size) {}

    void arrive_and_wait() {
      std::unique_lock lock(mutex_);
      const long round = round_;
      if (++arrived_ == size_) {
        arrived_ = 0;
        ++round_;
        all_arrived_.notify_all();
      } else {
        all_arrived_.wait(lock, [&] { return round_ != round; });
      }
    }

   private:
    int size_;
    int arrived_ = 0;
    long round_ = 0;
    std::mutex mutex_;
    std::condition_variable all_arrived_;
  };

  class Rank : public parallel::Communicator {
   public:
    Rank(ThreadGroup& group, int rank) : group_(group), rank_(rank) {}

    int rank() const override { return rank_; }
    int size() const override { return group_.size_; }
    void broadcast(std::string& bytes) override {
      if (rank_ == 0) group_.broadcast_ = &bytes;
      group_.barrier_.arrive_and_wait();
      if (rank_ != 0) bytes = *group_.broadcast_;
      group_.barrier_.arrive_and_wait();
    }
    void exchange(const Sent& out, const std::vector<std::span<std::byte>>& in) override {
      group_.sent_[static_cast<std::size_t>(rank_)] = &out;
      group_.barrier_.arrive_and_wait();
      for (int r = 0; r < size(); ++r) {
        if (r == rank_) continue;
        const auto from = (*group_.sent_[static_cast<std::size_t>(r)])[static_cast<std::size_t>(rank_)];
        const auto to = in[static_cast<std::size_t>(r)];
        if (from.size() != to.size()) std::terminate();
        if (!to.empty()) std::memcpy(to.data(), from.data(), to.size());
      }
      group_.barrier_.arrive_and_wait();
    }

   private:
    ThreadGroup& group_;
    int rank_;
  };

  int size_;
  Barrier barrier_;
  std::vector<const Sent*> sent_;
  std::string* broadcast_ = nullptr;
};

}  // namespace parallel_test
