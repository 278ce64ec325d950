// Notes the quantities of a file while its sections are checked, so that indexing need not walk the file
// again. If both walks would not read the file identically, it is walked again.
#pragma once

#include <cstdio>
#include <vector>

#include "dataset/fld_seek.h"

namespace fld {

class QuantityNotes {
 public:
  // `dimension` from the file's header.
  QuantityNotes(FILE* stream, int dimension) : stream_(stream), dimension_(dimension) {}

  void begin_region_set() { sets_.emplace_back(); }

  // If the section with `title` at `offset` is a quantity that can be noted, reads it up to and including its
  // end rule and returns true. Otherwise leaves the stream at the start of the section's body and returns
  // false.
  bool note_if_quantity(long offset, const char* title);

  // Call after reading a motion whose body starts at `body`. Does not move the stream.
  void check_motion(off_t body);

  // The quantities of each region set; empty if the walks may differ. `title` is the title that ended the
  // walk.
  std::vector<FLDSEEK> take(const char* title, int length);

 private:
  bool read_quantity(long offset, const char* title);

  FILE* stream_;
  int dimension_;
  bool agree_ = true;
  std::vector<FLDSEEK> sets_;
};

}  // namespace fld
