// What parts of a step are made from, as keys: where each of the arrays stands. What has the same key is the
// same, and is not read again.
#pragma once

#include <string>

#include "layout/step_layout.h"
#include "parallel/part_share.h"

namespace parallel {

// Of the cells and nodes of a share.
std::string mesh_key(const layout::SetMesh& mesh, const layout::PartLists& part, ShareNumber share);
// Of the nodes in a region set's moving volumes.
std::string motion_key(const layout::SetMesh& mesh);
// Of the coordinates of a share whose cells and nodes are those of `of_mesh`.
std::string points_key(const layout::SetMesh& mesh, const std::string& of_mesh);
// Of its values.
std::string values_key(const layout::SetMesh& mesh, const layout::PartLists& part,
                       const layout::VariableValues& variable, const std::string& of_mesh);

}  // namespace parallel
