// A part's mesh and the values of a formula on it, for tests of integrals.
#pragma once

#include <vector>

#include "analysis/integrals.h"
#include "tests/host/open_file.h"

namespace analysis_test {

inline bool is_never_cylindrical(const host::Part& /*part*/) {
  return false;
}

inline bool is_whole(const host::Part& part) {
  return part.kind == host::PartKind::whole;
}

inline analysis::PartMesh mesh_of(host::Session& session, int part) {
  return {session.coordinates(part), session.elements(part)};
}

// f(x, y, z) at the nodes.
template <class Function>
std::vector<float> at_nodes(const analysis::PartMesh& mesh, Function f) {
  std::vector<float> values(mesh.nodes.size());
  for (std::size_t i = 0; i < values.size(); ++i) {
    values[i] =
        static_cast<float>(f(static_cast<double>(mesh.nodes.x()[i]), static_cast<double>(mesh.nodes.y()[i]),
                             static_cast<double>(mesh.nodes.z()[i])));
  }
  return values;
}

}  // namespace analysis_test
