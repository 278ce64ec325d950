#include "python/binding/reader_lock.h"

#include <pthread.h>

namespace binding {

std::mutex& reader_mutex() {
  static std::mutex mutex;
  return mutex;
}

void keep_lock_over_forks() {
  // The calls that hold the lock never wait for Python's own, so a fork always gets it.
  pthread_atfork([] { reader_mutex().lock(); }, [] { reader_mutex().unlock(); },
                 [] { reader_mutex().unlock(); });
}

}  // namespace binding
