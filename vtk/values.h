// The values of a variable on a part as a VTK array.
#pragma once

#include <string>
#include <vtkDataArray.h>
#include <vtkSmartPointer.h>

#include "host/session.h"
#include "vtk/precision.h"

namespace vtkdata {

// The values at the session's step: a tuple per node of the part, or, for a variable per element, a tuple per
// element in the order of make_cells; 1 component, or 3 for a vector. Undefined values are NaN. Null if the
// step does not have the variable or the reader does not support it. Throws host::Error if the values cannot
// be read.
//
// `name` (UTF-8) becomes the name of the array, and the unit at the end of the variable's label its
// UNITS_LABEL.
vtkSmartPointer<vtkDataArray> make_values(host::Session& session, int variable, int part,
                                          const std::string& name,
                                          Precision precision = Precision::single_width);

}  // namespace vtkdata
