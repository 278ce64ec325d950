#include "format/elements.h"

#include "format/data_block.h"
#include "format/record.h"

namespace fld {

Elements::~Elements() {
  cv_mfree(type);
  cv_mfree(conn);
}

smart_ptr<Elements> FLDV4_Elements(FILE* stream) {
  auto elements = make_smart<Elements>();
  elements->nelem = read_int(stream);
  elements->type = read_int_array(stream, elements->nelem, 1100440).release();
  FLDV4_I_INT64array(stream, 1, &elements->nconn);
  elements->conn = read_int_array(stream, elements->nconn, 1100443).release();
  FLDV4_I_END(stream);
  return elements;
}

}  // namespace fld
