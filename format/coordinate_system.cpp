#include "format/coordinate_system.h"

#include "format/data_block.h"
#include "format/record.h"

namespace fld {

void FLDV4_CoordinateSystem(FILE* stream, int& value) {
  value = read_int(stream, value);
  FLDV4_I_END(stream);
}

}  // namespace fld
