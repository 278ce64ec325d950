// Notes the quantities of a file while its sections are checked, so that it is not walked again to index
// them. A file in which the two walks would part, be it by a title or by a length, is left to the second one.
#pragma once

#include <cstdio>
#include <vector>

#include "dataset/fld_seek.h"

namespace fld {

class QuantityNotes {
 public:
  // `dimension` as in the file's header.
  QuantityNotes(FILE* stream, int dimension) : stream_(stream), dimension_(dimension) {}

  void begin_region_set() { sets_.emplace_back(); }

  // Goes over the section that began at `offset` with `title` when it is a quantity that can be noted: the
  // stream is behind its end rule then. Else the stream stays where it is, at the beginning of the section's
  // body, and the result is false.
  bool pass(long offset, const char* title);

  // After a motion was read whose body begins at `body`. Leaves the stream where it is.
  void check_motion(off_t body);

  // The quantities of each region set, given the title that ended the file; nothing when there is any doubt.
  std::vector<FLDSEEK> take(const char* title, int length);

 private:
  bool read_quantity(long offset, const char* title);

  FILE* stream_;
  int dimension_;
  bool agree_ = true;
  std::vector<FLDSEEK> sets_;
};

}  // namespace fld
