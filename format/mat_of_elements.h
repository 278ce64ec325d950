// The material number of each element of one region set and the section "LS_MatOfElements".
#pragma once

#include <stdio.h>

#include "support/smart_ptr.h"

namespace fld {

class MatOfElements {
 public:
  MatOfElements() = default;
  MatOfElements(const MatOfElements&) = delete;
  MatOfElements& operator=(const MatOfElements&) = delete;
  ~MatOfElements();

  int nelem = 0;
  int* mat = nullptr;  // nelem material numbers
};

// Reads the section's body: int block nelem; int block of nelem material numbers; end rule.
smart_ptr<MatOfElements> FLDV4_MatOfElements(FILE* stream);

}  // namespace fld
