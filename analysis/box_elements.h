// Cuts grids down to a box.
#pragma once

#include <vtkSmartPointer.h>
#include <vtkUnstructuredGrid.h>

#include "analysis/vec3.h"

namespace analysis {

// The cells that have at least one of their points in the box, its faces included, and the points that they
// need, with their data. The corners of the box are any two opposite ones.
vtkSmartPointer<vtkUnstructuredGrid> elements_in_box(vtkUnstructuredGrid* grid, const Vec3& corner,
                                                     const Vec3& opposite);

}  // namespace analysis
