#include "format/quantity.h"

#include "format/data_block.h"
#include "format/record.h"
#include "support/tracked_allocation.h"

namespace fld {

namespace {

template <class AnyScalar>
void take_scalar(FILE* stream, AnyScalar& scalar) {
  FLDV4_I_CHARarray(stream, kLabelLength, scalar.text);
  scalar.n = read_int(stream);
  take_floats(stream, scalar.n, scalar.values);
  FLDV4_I_END(stream);
}

template <class AnyVector>
void take_vector(FILE* stream, AnyVector& vector) {
  vector.leading = read_int(stream);
  FLDV4_I_CHARarray(stream, kLabelLength, vector.text);
  vector.n = read_int(stream);
  for (auto& component : vector.components) take_floats(stream, vector.n, component);
  FLDV4_I_END(stream);
}

}  // namespace

Scalar::~Scalar() {
  cv_mfree(values.data);
}

Vector::~Vector() {
  for (VFPA& component : components) cv_mfree(component.data);
}

smart_ptr<Scalar> FLDV4_Scalar(FILE* stream) {
  auto scalar = make_smart<Scalar>();
  take_scalar(stream, *scalar);
  return scalar;
}

smart_ptr<Vector> FLDV4_Vector(FILE* stream) {
  auto vector = make_smart<Vector>();
  take_vector(stream, *vector);
  return vector;
}

void locate(FILE* stream, ScalarLayout& scalar) {
  take_scalar(stream, scalar);
}

void locate(FILE* stream, VectorLayout& vector) {
  take_vector(stream, vector);
}

}  // namespace fld
