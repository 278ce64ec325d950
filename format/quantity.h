// The values of one quantity of one file: the sections "LS_Scalar:<name>" and "LS_Vector:<name>".
#pragma once

#include <stdio.h>

#include "format/array_layout.h"
#include "format/quantity_index.h"
#include "support/smart_ptr.h"
#include "support/vfpa.h"

namespace fld {

class Scalar {
 public:
  Scalar() = default;
  Scalar(const Scalar&) = delete;
  Scalar& operator=(const Scalar&) = delete;
  ~Scalar();

  char text[kLabelLength + 1] = {};  // label as stored, with trailing blanks
  int n = 0;                         // values
  VFPA values;                       // n values, one per node of the region set
};

class Vector {
 public:
  Vector() = default;
  Vector(const Vector&) = delete;
  Vector& operator=(const Vector&) = delete;
  ~Vector();

  int leading = 0;                   // first integer of the section's body, kept as read
  char text[kLabelLength + 1] = {};  // label as stored, with trailing blanks
  int n = 0;                         // values per component
  VFPA components[3];                // X, Y, Z: n values each; components may differ in precision
};

// The location of a quantity's values in the file.
struct ScalarLayout {
  char text[kLabelLength + 1] = {};
  int n = 0;
  ArrayLayout values;
};
struct VectorLayout {
  int leading = 0;
  char text[kLabelLength + 1] = {};
  int n = 0;
  ArrayLayout components[3];
};

// All start after the section's leading integer.

// Body: char block of 32 (label), int block N, floating block of N values, end rule.
smart_ptr<Scalar> FLDV4_Scalar(FILE* stream);

// Body: int block (leading integer), char block of 32 (label), int block N, floating blocks of N X, Y and Z
// values, end rule.
smart_ptr<Vector> FLDV4_Vector(FILE* stream);

// Skip the bodies and note the locations of their arrays.
void locate(FILE* stream, ScalarLayout& scalar);
void locate(FILE* stream, VectorLayout& vector);

}  // namespace fld
