// The labels of a dataset's variables, and the units in them, in VTK's objects.
#pragma once

#include <vtkDataArray.h>
#include <vtkSmartPointer.h>
#include <vtkStringArray.h>

#include "host/session.h"

namespace vtkdata {

// A field array "Labels" with an entry "name: label" per variable that has a label.
vtkSmartPointer<vtkStringArray> make_labels(host::Session& session);

// Gives an array the unit of the variable, without control characters, if its label has one.
void set_unit(vtkDataArray* array, const host::Variable& variable);

}  // namespace vtkdata
