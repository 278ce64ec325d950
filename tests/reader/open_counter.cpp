#include "tests/reader/open_counter.h"

#include <array>
#include <cerrno>
#include <cstring>
#include <sys/inotify.h>
#include <system_error>
#include <unistd.h>
#include <utility>

namespace reader_test {

OpenCounter::OpenCounter() : queue_(inotify_init1(IN_NONBLOCK | IN_CLOEXEC)) {
  if (queue_ < 0) throw std::system_error(errno, std::generic_category(), "inotify_init1");
}

OpenCounter::~OpenCounter() {
  close(queue_);
}

void OpenCounter::watch(const std::filesystem::path& path) {
  // Also watches close: inotify merges two equal consecutive events.
  const int watch = inotify_add_watch(queue_, path.c_str(), IN_OPEN | IN_CLOSE);
  if (watch < 0) throw std::system_error(errno, std::generic_category(), path.string());
  watches_[path] = watch;
}

int OpenCounter::take(const std::filesystem::path& path) {
  collect();
  return std::exchange(opened_[watches_.at(path)], 0);
}

int OpenCounter::take_all() {
  int total = 0;
  for (const auto& [path, watch] : watches_) total += take(path);
  return total;
}

void OpenCounter::collect() {
  alignas(inotify_event) std::array<char, 4096> buffer;
  for (;;) {
    const ssize_t size = read(queue_, buffer.data(), buffer.size());
    if (size <= 0) return;
    for (std::size_t position = 0; position < static_cast<std::size_t>(size);) {
      inotify_event event{};
      memcpy(&event, buffer.data() + position, sizeof event);
      if ((event.mask & IN_OPEN) != 0) ++opened_[event.wd];
      position += sizeof event + event.len;
    }
  }
}

}  // namespace reader_test
