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

  // What was written since the last call; at most what a terminal holds back, some kilobytes. What is written
  // arrives some time later, so a mark is written behind it and waited for.
  std::string take() const {
    constexpr char kMark = '\0';
    if (write(screen_, &kMark, 1) != 1) fail();
    std::string text;
    std::size_t mark = std::string::npos;
    while (mark == std::string::npos) {
      wait();
      char piece[4096];
      const ssize_t size = read(reader_, piece, sizeof piece);
      if (size <= 0) fail();
      text.append(piece, static_cast<std::size_t>(size));
      mark = text.find(kMark);
    }
    return text.erase(mark, 1);
  }

  // The same, once there is something.
  std::string wait_and_take() const {
    wait();
    return take();
  }

 private:
  void wait() const {
    pollfd written{.fd = reader_, .events = POLLIN, .revents = 0};
    poll(&written, 1, 60'000);
  }

  [[noreturn]] static void fail() {
    throw std::system_error(errno, std::generic_category(), "cannot make a terminal");
  }

  int reader_;
  int screen_ = -1;
};

}  // namespace tool_test
