// The material number of each element of one region set and the section "LS_MatOfElements".
#pragma once

#include <stdio.h>

#include "format/array_layout.h"
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

// The location of a material list in its file.
struct MaterialsLayout {
  int nelem = 0;
  ArrayLayout mat;
};

// Reads the section's body: int block nelem; int block of nelem material numbers; end rule.
smart_ptr<MatOfElements> FLDV4_MatOfElements(FILE* stream);

// Skips the body and notes the location of its array.
void locate(FILE* stream, MaterialsLayout& materials);

}  // namespace fld
