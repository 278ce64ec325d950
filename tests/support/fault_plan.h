// When an injected fault occurs: at one request, or from that one on.
#pragma once

#include <cstddef>

class FaultPlan {
 public:
  enum class Lasting { kOnce, kForEver };

  // The `request`-th request from now on, from 1, is the first to fail.
  void begin(int request, Lasting lasting = Lasting::kOnce) {
    *this = FaultPlan();
    left_ = request;
    lasting_ = lasting;
  }
  void end() { left_ = 0; }

  // Requests in between neither fail nor count.
  void pause() { is_paused_ = true; }
  void resume() { is_paused_ = false; }

  // Counts a request, and says whether it fails.
  bool strikes() {
    if (is_paused_ || left_ == 0) return false;
    if (left_ > 1) {
      --left_;
      return false;
    }
    has_struck_ = true;
    if (lasting_ == Lasting::kOnce) left_ = 0;
    return true;
  }
  bool has_struck() const { return has_struck_; }

 private:
  int left_ = 0;  // requests up to the one that fails; 0: none will
  Lasting lasting_ = Lasting::kOnce;
  bool is_paused_ = false;
  bool has_struck_ = false;
};
