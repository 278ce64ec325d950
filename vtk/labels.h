// The labels of a dataset's variables as a VTK array.
#pragma once

#include <vtkSmartPointer.h>
#include <vtkStringArray.h>

#include "host/session.h"

namespace vtkdata {

// A field array "Labels" with an entry "name: label" per variable that has a label.
vtkSmartPointer<vtkStringArray> make_labels(host::Session& session);

}  // namespace vtkdata
