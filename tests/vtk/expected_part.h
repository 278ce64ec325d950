// Compares a part's VTK grid with the values of the host library.
#pragma once

#include <vtkUnstructuredGrid.h>

#include "host/session.h"

namespace vtk_test {

// Compares points, cells (including their orientation) and the values of every variable of the session's
// step. Arrays are named as in host::variable_names.
void expect_part(vtkUnstructuredGrid* grid, host::Session& session, const host::Part& part);

}  // namespace vtk_test
