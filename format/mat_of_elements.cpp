#include "format/mat_of_elements.h"

#include "format/data_block.h"
#include "format/record.h"

namespace fld {

namespace {

template <class Materials>
void take_materials(FILE* stream, Materials& materials) {
  materials.nelem = read_int(stream);
  take_ints(stream, materials.nelem, 1100457, materials.mat);
  FLDV4_I_END(stream);
}

}  // namespace

MatOfElements::~MatOfElements() {
  cv_mfree(mat);
}

smart_ptr<MatOfElements> FLDV4_MatOfElements(FILE* stream) {
  auto materials = make_smart<MatOfElements>();
  take_materials(stream, *materials);
  return materials;
}

void locate(FILE* stream, MaterialsLayout& materials) {
  take_materials(stream, materials);
}

}  // namespace fld
