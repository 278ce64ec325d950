// Loops over large arrays, split among threads; for hosts too, which do not see the reader's own headers.
#pragma once

#include <cstddef>
#include <functional>

namespace host {

// Calls work(begin, end) for consecutive ranges of `count` elements of `width` bytes, in as many threads as
// the reader has (FLD_THREADS), and returns when all calls have. `work` must not throw.
void for_ranges(std::size_t count, std::size_t width,
                const std::function<void(std::size_t begin, std::size_t end)>& work);

}  // namespace host
