// A part's coordinates as VTK points.
#pragma once

#include <vtkPoints.h>
#include <vtkSmartPointer.h>

#include "host/dataset.h"
#include "vtk/precision.h"

namespace vtkdata {

// The nodes in the order of their numbers: node n is point n - 1.
vtkSmartPointer<vtkPoints> make_points(const host::Coordinates& coordinates,
                                       Precision precision = Precision::single_width);

}  // namespace vtkdata
