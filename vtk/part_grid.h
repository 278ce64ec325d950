// A part as an unstructured grid.
#pragma once

#include <vtkPoints.h>
#include <vtkSmartPointer.h>
#include <vtkUnstructuredGrid.h>

#include "host/session.h"
#include "vtk/cells.h"
#include "vtk/precision.h"
#include "vtk/values.h"

namespace vtkdata {

// A grid that shares these points and cells, possibly of another step.
vtkSmartPointer<vtkUnstructuredGrid> make_grid(vtkPoints* points, const Cells& cells);

// The part's points and cells at the session's step.
vtkSmartPointer<vtkUnstructuredGrid> make_part_grid(host::Session& session, int part,
                                                    Precision precision = Precision::single_width);

// Adds the values of a variable (make_values) as point or cell data. Returns whether there are any.
bool add_values(vtkUnstructuredGrid* grid, host::Session& session, int variable, int part,
                const std::string& name, Precision precision = Precision::single_width);

}  // namespace vtkdata
