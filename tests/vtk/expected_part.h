// What a part's VTK grid has to be: what the host library gives for it.
#pragma once

#include <vtkUnstructuredGrid.h>

#include "host/session.h"

namespace vtk_test {

// Compares points, cells (whose corners must be the right way round) and the values of every variable that
// has any at the session's step. Arrays are named as host::variable_names says.
void expect_part(vtkUnstructuredGrid* grid, host::Session& session, const host::Part& part);

}  // namespace vtk_test
