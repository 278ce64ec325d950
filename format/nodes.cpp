#include "format/nodes.h"

#include "format/data_block.h"
#include "format/record.h"

namespace fld {

namespace {

template <class AnyNodes>
void take_nodes(FILE* stream, AnyNodes& nodes) {
  nodes.nnode = read_int(stream);
  for (auto* axis : {&nodes.x, &nodes.y, &nodes.z}) take_floats(stream, nodes.nnode, *axis);
  FLDV4_I_END(stream);
}

}  // namespace

Nodes::~Nodes() {
  cv_mfree(x.data);
  cv_mfree(y.data);
  cv_mfree(z.data);
}

smart_ptr<Nodes> FLDV4_Nodes(FILE* stream) {
  auto nodes = make_smart<Nodes>();
  take_nodes(stream, *nodes);
  return nodes;
}

void locate(FILE* stream, NodesLayout& nodes) {
  take_nodes(stream, nodes);
}

void FLDV4_CoordinateSystem(FILE* stream, int& value) {
  value = read_int(stream, value);
  FLDV4_I_END(stream);
}

}  // namespace fld
