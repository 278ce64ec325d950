// What could not be read while the rest went on, in words, each in a row once.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "tool/exit_status.h"

namespace tool {

class Problems {
 public:
  // As a rule it is the same for every part, and noted once.
  void add(const std::string& problem) {
    if (texts_.empty() || texts_.back() != problem) texts_.push_back(problem);
  }
  void add(const std::vector<std::string>& problems) {
    for (const std::string& problem : problems) add(problem);
  }

  const std::vector<std::string>& texts() const { return texts_; }
  // The same, and none are left.
  std::vector<std::string> take() { return std::exchange(texts_, {}); }

  // Throws CommandError (unreadable) with the first one, if there is one.
  void report() const {
    if (!texts_.empty()) throw CommandError(ExitStatus::unreadable, texts_.front());
  }

 private:
  std::vector<std::string> texts_;
};

}  // namespace tool
