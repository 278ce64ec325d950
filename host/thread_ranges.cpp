#include "host/thread_ranges.h"

#include <cstdint>

#include "support/worker_threads.h"

namespace host {

void for_ranges(std::size_t count, std::size_t width,
                const std::function<void(std::size_t begin, std::size_t end)>& work) {
  fld::for_ranges(static_cast<std::int64_t>(count), width, [&](std::int64_t begin, std::int64_t end) {
    work(static_cast<std::size_t>(begin), static_cast<std::size_t>(end));
  });
}

}  // namespace host
