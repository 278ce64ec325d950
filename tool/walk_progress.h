// Progress lines for the walks through files in inspect/.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "tool/interrupt.h"
#include "tool/progress.h"

namespace tool {

// To be called with the bytes that are done and the size of the file; throws Interrupted after a signal. Each
// walk has its own line.
class WalkProgress {
 public:
  explicit WalkProgress(std::string what) : what_(std::move(what)) {}

  void operator()(std::uint64_t done, std::uint64_t total) {
    stop_if_interrupted();
    if (!line_ || done < done_ || total != total_) line_.emplace(what_, total, ProgressUnit::bytes);
    done_ = done;
    total_ = total;
    line_->update(done);
  }

  // Makes room for other text.
  void erase() {
    if (line_) line_->erase();
  }

 private:
  std::string what_;
  std::optional<Progress> line_;
  std::uint64_t done_ = 0;
  std::uint64_t total_ = 0;
};

}  // namespace tool
