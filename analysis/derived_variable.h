// Computes derived variables on grids.
#pragma once

#include <string>
#include <vtkFloatArray.h>
#include <vtkSmartPointer.h>
#include <vtkUnstructuredGrid.h>

#include "analysis/derived_name.h"

namespace analysis {

// The derived values, one tuple per point of the grid. `values` has a tuple per point of the grid with as
// many components as takes_vector says; anything else is an std::invalid_argument. Derivatives are those of
// the elements' shape functions at the node, averaged over the solid elements around it (in a grid without
// solids, over the faces), so they are exact where the variable is linear. The coordinates have to be
// Cartesian. The result has `name`. It is NaN where a value is undefined; a derivative also where a value of
// an element around the node is undefined, and where there is no such element.
vtkSmartPointer<vtkFloatArray> derive(vtkUnstructuredGrid* grid, vtkDataArray* values, Derivation derivation,
                                      const std::string& name);

// The lengths of vectors of 3 components, NaN where one of them is.
vtkSmartPointer<vtkFloatArray> magnitudes(vtkDataArray* vectors, const std::string& name);

}  // namespace analysis
