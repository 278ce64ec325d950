// A limit to what the heap may hold beyond what it held before. It is only known under AddressSanitizer; in
// other builds nothing is ever beyond it.
#pragma once

#include <cstddef>

namespace fuzz {

// From now on the heap may grow by `bytes`.
void watch_heap(std::size_t bytes);

// Whether the heap stayed within the limit.
bool end_watching_heap();

}  // namespace fuzz
