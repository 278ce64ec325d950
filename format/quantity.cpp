#include "format/quantity.h"

#include "format/data_block.h"
#include "format/record.h"
#include "support/tracked_allocation.h"

namespace fld {

Scalar::~Scalar() {
  cv_mfree(values.data);
}

Vector::~Vector() {
  for (VFPA& component : components) cv_mfree(component.data);
}

smart_ptr<Scalar> FLDV4_Scalar(FILE* stream) {
  auto scalar = make_smart<Scalar>();
  FLDV4_I_CHARarray(stream, kLabelLength, scalar->text);
  scalar->n = read_int(stream);
  FLDV4_I_FPRECaloc_array(stream, scalar->n, &scalar->values);
  FLDV4_I_END(stream);
  return scalar;
}

smart_ptr<Vector> FLDV4_Vector(FILE* stream) {
  auto vector = make_smart<Vector>();
  vector->leading = read_int(stream);
  FLDV4_I_CHARarray(stream, kLabelLength, vector->text);
  vector->n = read_int(stream);
  for (VFPA& component : vector->components) FLDV4_I_FPRECaloc_array(stream, vector->n, &component);
  FLDV4_I_END(stream);
  return vector;
}

}  // namespace fld
