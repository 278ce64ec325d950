#include "format/nodes.h"

#include "format/data_block.h"
#include "format/record.h"

namespace fld {

Nodes::~Nodes() {
  cv_mfree(x.data);
  cv_mfree(y.data);
  cv_mfree(z.data);
}

smart_ptr<Nodes> FLDV4_Nodes(FILE* stream) {
  auto nodes = make_smart<Nodes>();
  nodes->nnode = read_int(stream);
  for (VFPA* axis : {&nodes->x, &nodes->y, &nodes->z}) FLDV4_I_FPRECaloc_array(stream, nodes->nnode, axis);
  FLDV4_I_END(stream);
  return nodes;
}

}  // namespace fld
