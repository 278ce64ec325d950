// When an injected fault occurs: at one request, or from that one on.
#pragma once

#include <mutex>

// Requests may come from several threads.
class FaultPlan {
 public:
  enum class Lasting { kOnce, kForEver };

  // The `request`-th request from now on, from 1, is the first to fail.
  void begin(int request, Lasting lasting = Lasting::kOnce) {
    const std::lock_guard lock(mutex_);
    left_ = request;
    lasting_ = lasting;
    is_paused_ = false;
    has_struck_ = false;
  }
  void end() {
    const std::lock_guard lock(mutex_);
    left_ = 0;
  }

  // Requests in between neither fail nor count.
  void pause() { set_paused(true); }
  void resume() { set_paused(false); }

  // Counts a request, and says whether it fails.
  bool strikes() {
    const std::lock_guard lock(mutex_);
    if (is_paused_ || left_ == 0) return false;
    if (left_ > 1) {
      --left_;
      return false;
    }
    has_struck_ = true;
    if (lasting_ == Lasting::kOnce) left_ = 0;
    return true;
  }
  bool has_struck() const {
    const std::lock_guard lock(mutex_);
    return has_struck_;
  }

 private:
  void set_paused(bool is_paused) {
    const std::lock_guard lock(mutex_);
    is_paused_ = is_paused;
  }

  mutable std::mutex mutex_;
  int left_ = 0;  // requests up to the one that fails; 0: none will
  Lasting lasting_ = Lasting::kOnce;
  bool is_paused_ = false;
  bool has_struck_ = false;
};
