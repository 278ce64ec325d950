// The host's variables: the catalogue's scalars, then its vectors, then the material number of each element.
#pragma once

#include <cstddef>

#include "dataset/field.h"

namespace fld {

// What a variable number stands for.
struct Variable {
  enum class Kind { none, scalar, vector, material };
  // The host's variable types.
  static constexpr int kScalarType = 1;
  static constexpr int kVectorType = 2;

  Kind kind = Kind::none;
  size_t index = 0;  // in the catalogue's list of its kind

  int host_type() const { return kind == Kind::vector ? kVectorType : kScalarType; }
};

// The catalogue of the open dataset; an empty one without a dataset.
const Field& catalogue();

// Variable `number` from 1; Kind::none outside the range.
Variable find_variable(int number);

}  // namespace fld
