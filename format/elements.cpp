#include "format/elements.h"

#include "format/data_block.h"
#include "format/record.h"

namespace fld {

namespace {

template <class AnyElements>
void take_elements(FILE* stream, AnyElements& elements) {
  elements.nelem = read_int(stream);
  take_ints(stream, elements.nelem, 1100440, elements.type);
  FLDV4_I_INT64array(stream, 1, &elements.nconn);
  take_ints(stream, elements.nconn, 1100443, elements.conn);
  FLDV4_I_END(stream);
}

}  // namespace

Elements::~Elements() {
  cv_mfree(type);
  cv_mfree(conn);
}

smart_ptr<Elements> FLDV4_Elements(FILE* stream) {
  auto elements = make_smart<Elements>();
  take_elements(stream, *elements);
  return elements;
}

void locate(FILE* stream, ElementsLayout& elements) {
  take_elements(stream, elements);
}

}  // namespace fld
