#include "format/mat_of_elements.h"

#include "format/data_block.h"
#include "format/record.h"

namespace fld {

MatOfElements::~MatOfElements() {
  cv_mfree(mat);
}

smart_ptr<MatOfElements> FLDV4_MatOfElements(FILE* stream) {
  auto materials = make_smart<MatOfElements>();
  materials->nelem = read_int(stream);
  materials->mat = read_int_array(stream, materials->nelem, 1100457).release();
  FLDV4_I_END(stream);
  return materials;
}

}  // namespace fld
