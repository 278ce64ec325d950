// A terminal that no person sits at: what a program draws on it can be looked at.
#pragma once

#include <cstdlib>
#include <fcntl.h>
#include <poll.h>
#include <string>
#include <sys/ioctl.h>
#include <system_error>
#include <unistd.h>

namespace tool_test {

// Erases the line that is drawn.
inline constexpr char kErase[] = "\r\x1b[K";

class Terminal {
 public:
  explicit Terminal(unsigned short columns = 80) : reader_(posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC)) {
    if (reader_ < 0 || grantpt(reader_) != 0 || unlockpt(reader_) != 0) fail();
    screen_ = open(ptsname(reader_), O_RDWR | O_NOCTTY | O_CLOEXEC);
    const winsize size = {.ws_row = 25, .ws_col = columns, .ws_xpixel = 0, .ws_ypixel = 0};
    if (screen_ < 0 || ioctl(screen_, TIOCSWINSZ, &size) != 0 || fcntl(reader_, F_SETFL, O_NONBLOCK) != 0) {
      fail();
    }
  }
  Terminal(const Terminal&) = delete;
  Terminal& operator=(const Terminal&) = delete;
  ~Terminal() {
    close(screen_);
    close(reader_);
  }

  // The side that a program writes to.
  int screen() const { return screen_; }

  // What was written since the last call; at most what a terminal holds back, some kilobytes.
  std::string take() const {
    std::string text;
    char piece[4096];
    for (ssize_t size = read(reader_, piece, sizeof piece); size > 0;
         size = read(reader_, piece, sizeof piece)) {
      text.append(piece, static_cast<std::size_t>(size));
    }
    return text;
  }

  // The same, once there is something.
  std::string wait_and_take() const {
    pollfd written{.fd = reader_, .events = POLLIN, .revents = 0};
    poll(&written, 1, 60'000);
    return take();
  }

 private:
  [[noreturn]] static void fail() {
    throw std::system_error(errno, std::generic_category(), "cannot make a terminal");
  }

  int reader_;
  int screen_ = -1;
};

}  // namespace tool_test
