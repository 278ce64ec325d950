// A progress line: on a terminal only, redrawn during long work and erased at its end.
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <unistd.h>

namespace tool {

enum class ProgressUnit { bytes, steps };

// "case.fld: 1.2 of 4.0 GB, 30 %, 410 MB/s, 0:07 left", or "steps: 3 of 25, 12 %, 1.5/s, 0:14 left". Without
// a rate and a remaining time as long as nothing is done or no time has passed; cut to `width` columns.
std::string progress_text(std::string_view what, std::uint64_t done, std::uint64_t total, ProgressUnit unit,
                          double seconds, std::size_t width);

class Progress {
 public:
  using Clock = std::chrono::steady_clock;

  // `what` is being worked on, in UTF-8. Nothing is ever written unless the descriptor is a terminal.
  Progress(std::string what, std::uint64_t total, ProgressUnit unit, int descriptor = STDERR_FILENO,
           std::function<Clock::time_point()> now = Clock::now);
  Progress(const Progress&) = delete;
  Progress& operator=(const Progress&) = delete;
  // Erases the line.
  ~Progress();

  // From now on no progress is drawn in this process.
  static void silence();

  // `done` of `total`. Draws at most ten times a second, so it may be called for every block of the work.
  void update(std::uint64_t done);

  // Erases the line, so that something else can be written to the terminal; the next update may draw it
  // again.
  void erase();

 private:
  std::string what_;
  std::uint64_t total_;
  ProgressUnit unit_;
  int descriptor_;
  bool is_terminal_;
  bool is_drawn_ = false;
  std::function<Clock::time_point()> now_;
  Clock::time_point start_;
  std::optional<Clock::time_point> drawn_at_;
};

}  // namespace tool
