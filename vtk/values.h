// The values of a variable on a part as a VTK array.
#pragma once

#include <string>
#include <vtkDataArray.h>
#include <vtkSmartPointer.h>

#include "host/session.h"
#include "vtk/precision.h"

namespace vtkdata {

// The values at the session's step: a tuple per node of the part, or, for a variable that is given per
// element, a tuple per element in the order of make_cells; 1 component, or 3 for a vector. NaN where a value
// is undefined. Null when there are none: the step lacks the variable, or the reader offers no values of it.
// Throws host::Error when the values cannot be read.
//
// `name` (UTF-8) becomes the array's name. The variable's unit, if its label ends with one in brackets,
// becomes its UNITS_LABEL.
vtkSmartPointer<vtkDataArray> make_values(host::Session& session, int variable, int part,
                                          const std::string& name,
                                          Precision precision = Precision::single_width);

}  // namespace vtkdata
