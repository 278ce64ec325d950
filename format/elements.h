// The element list of one region set and the section "LS_Elements".
#pragma once

#include <stdio.h>

#include "format/element_counts.h"
#include "support/smart_ptr.h"

namespace fld {

class Elements : public ElementCounts {
 public:
  Elements() = default;
  Elements(const Elements&) = delete;
  Elements& operator=(const Elements&) = delete;
  ~Elements();

  int nelem = 0;
  int* type = nullptr;  // nelem type codes
  int* conn = nullptr;  // nconn node indices, element after element, each with as many as its type has nodes
  long nconn = 0;
};

// Reads the section's body: int block nelem; int block of nelem types; int block of 4 or 8 bytes nconn; int
// block of nconn node numbers; end rule.
smart_ptr<Elements> FLDV4_Elements(FILE* stream);

}  // namespace fld
