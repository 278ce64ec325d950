#include "tool/progress.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <sys/ioctl.h>
#include <utility>

#include "fmt/format.h"
#include "tool/best_effort_write.h"

namespace tool {
namespace {

constexpr std::chrono::milliseconds kBetweenDrawings{100};
constexpr std::size_t kUsualWidth = 80;
constexpr char kEraseLine[] = "\r\x1b[K";

struct ByteUnit {
  double bytes;
  const char* name;
};

ByteUnit unit_for(double bytes) {
  constexpr std::array<ByteUnit, 4> kUnits = {{{1e9, "GB"}, {1e6, "MB"}, {1e3, "kB"}, {1, "B"}}};
  for (const ByteUnit& unit : kUnits) {
    if (bytes >= unit.bytes) return unit;
  }
  return kUnits.back();
}

std::string bytes_text(double bytes, const ByteUnit& unit) {
  return unit.bytes == 1 ? fmt::format("{:.0f}", bytes) : fmt::format("{:.1f}", bytes / unit.bytes);
}

std::string time_text(double seconds) {
  const auto whole = static_cast<std::uint64_t>(std::ceil(seconds));
  const std::uint64_t hours = whole / 3600;
  if (hours > 0) return fmt::format("{}:{:02}:{:02}", hours, whole / 60 % 60, whole % 60);
  return fmt::format("{}:{:02}", whole / 60, whole % 60);
}

bool is_silent = false;

// The longest beginning of at most `width` bytes that does not end inside a character.
std::string_view cut(std::string_view text, std::size_t width) {
  if (text.size() <= width) return text;
  const auto continues = [](char byte) { return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U; };
  while (width > 0 && continues(text[width])) --width;
  return text.substr(0, width);
}

std::size_t width_of(int descriptor) {
  winsize size = {};
  const bool is_known = ioctl(descriptor, TIOCGWINSZ, &size) == 0 && size.ws_col > 1;
  // A terminal goes on in the next line behind the last column, which the erasing would not reach.
  return (is_known ? size.ws_col : kUsualWidth) - 1;
}

}  // namespace

std::string progress_text(std::string_view what, std::uint64_t done, std::uint64_t total, ProgressUnit unit,
                          double seconds, std::size_t width) {
  done = std::min(done, total);
  const auto whole = static_cast<double>(total);
  const auto part = static_cast<double>(done);
  const double rate = seconds > 0 ? part / seconds : 0;
  std::string text = fmt::format("{}: ", what);
  if (unit == ProgressUnit::bytes) {
    const ByteUnit scale = unit_for(whole);
    text += fmt::format("{} of {} {}", bytes_text(part, scale), bytes_text(whole, scale), scale.name);
  } else {
    text += fmt::format("{} of {}", done, total);
  }
  if (total > 0) text += fmt::format(", {:.0f} %", std::floor(100 * part / whole));
  if (rate > 0) {
    const ByteUnit scale = unit_for(rate);
    text += unit == ProgressUnit::bytes ? fmt::format(", {} {}/s", bytes_text(rate, scale), scale.name)
                                        : fmt::format(", {:.3g}/s", rate);
    text += fmt::format(", {} left", time_text((whole - part) / rate));
  }
  return std::string(cut(text, width));
}

Progress::Progress(std::string what, std::uint64_t total, ProgressUnit unit, int descriptor,
                   std::function<Clock::time_point()> now)
    : what_(std::move(what)),
      total_(total),
      unit_(unit),
      descriptor_(descriptor),
      is_terminal_(isatty(descriptor) == 1),
      now_(std::move(now)),
      start_(now_()) {}

Progress::~Progress() {
  erase();
}

void Progress::silence() {
  is_silent = true;
}

void Progress::update(std::uint64_t done) {
  if (!is_terminal_ || is_silent) return;
  const Clock::time_point time = now_();
  if (drawn_at_ && time - *drawn_at_ < kBetweenDrawings) return;
  drawn_at_ = time;
  const double seconds = std::chrono::duration<double>(time - start_).count();
  write_if_possible(descriptor_,
                    kEraseLine + progress_text(what_, done, total_, unit_, seconds, width_of(descriptor_)));
  is_drawn_ = true;
}

void Progress::erase() {
  if (is_drawn_) write_if_possible(descriptor_, kEraseLine);
  is_drawn_ = false;
}

}  // namespace tool
