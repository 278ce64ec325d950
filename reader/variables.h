// The host's variables: the catalogue's scalars, then its vectors, then the material number of each element.
#pragma once

#include <cstddef>

#include "dataset/field.h"

namespace fld {

// A variable.
struct Variable {
  enum class Kind { none, scalar, vector, material };
  // The host's variable types.
  static constexpr int kScalarType = 1;
  static constexpr int kVectorType = 2;

  Kind kind = Kind::none;
  size_t index = 0;  // in the catalogue's list of this kind

  int host_type() const { return kind == Kind::vector ? kVectorType : kScalarType; }
};

// The catalogue of the open dataset; empty if none is open.
const Field& catalogue();

// Variable `number`, from 1; Kind::none if out of range.
Variable find_variable(int number);

}  // namespace fld
