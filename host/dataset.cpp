#include "host/dataset.h"

#include <algorithm>
#include <numeric>

#include "host/thread_ranges.h"

namespace host {

HostArray::HostArray(std::size_t count, float filled_with) : entries_(count + 1) {
  for_ranges(entries_.size(), sizeof(float), [&](std::size_t begin, std::size_t end) {
    std::fill(entries_.data() + begin, entries_.data() + end, filled_with);
  });
}

std::int64_t Part::element_count() const {
  return std::accumulate(elements.begin(), elements.end(), std::int64_t{0});
}

}  // namespace host
