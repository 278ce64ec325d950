// The element list of one region set and the section "LS_Elements".
#pragma once

#include <stdio.h>

#include "format/array_layout.h"
#include "format/element_counts.h"
#include "support/smart_ptr.h"

namespace fld {

// Smallest and largest index; the defaults fit no table.
struct IndexRange {
  int smallest = -1;
  int largest = 0;

  bool is_inside(int count) const { return smallest >= 0 && largest < count; }
};

class Elements : public ElementCounts {
 public:
  Elements() = default;
  Elements(const Elements&) = delete;
  Elements& operator=(const Elements&) = delete;
  ~Elements();

  int nelem = 0;
  int* type = nullptr;  // nelem type codes
  int* conn = nullptr;  // nconn node indices, element by element
  long nconn = 0;
  IndexRange conn_range;  // of conn; set when the indices become zero-based
};

// The location of an element list in its file.
struct ElementsLayout {
  int nelem = 0;
  ArrayLayout type;
  ArrayLayout conn;
  long nconn = 0;
};

// Reads the section's body: int block nelem; int block of nelem types; int block of 4 or 8 bytes nconn; int
// block of nconn node numbers; end rule.
smart_ptr<Elements> FLDV4_Elements(FILE* stream);

// Skips the body and notes the locations of its arrays.
void locate(FILE* stream, ElementsLayout& elements);

}  // namespace fld
