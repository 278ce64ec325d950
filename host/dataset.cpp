#include "host/dataset.h"

#include <numeric>

namespace host {

std::int64_t Part::element_count() const {
  return std::accumulate(elements.begin(), elements.end(), std::int64_t{0});
}

}  // namespace host
