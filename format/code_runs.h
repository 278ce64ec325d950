// Runs of equal type codes: elements of one type mostly stand together, and what is asked of their type is
// asked once per run.
#pragma once

#include <cstdint>

namespace fld {

// Calls visit(code, first, last) for each run of equal codes, `first` to `last` - 1, among the entries
// `begin` to `end` - 1.
template <class Visit>
void for_each_run(const int* codes, int64_t begin, int64_t end, Visit visit) {
  while (begin < end) {
    const int code = codes[begin];
    int64_t last = begin + 1;
    while (last < end && codes[last] == code) ++last;
    visit(code, begin, last);
    begin = last;
  }
}

}  // namespace fld
