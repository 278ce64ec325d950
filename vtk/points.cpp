#include "vtk/points.h"

#include <vtkAOSDataArrayTemplate.h>
#include <vtkDoubleArray.h>
#include <vtkFloatArray.h>

#include "host/tuples.h"

namespace vtkdata {

vtkSmartPointer<vtkPoints> make_points(const host::Coordinates& coordinates, Precision precision) {
  auto points = vtkSmartPointer<vtkPoints>::New();
  const bool is_single = precision == Precision::single_width;
  points->SetDataType(is_single ? VTK_FLOAT : VTK_DOUBLE);
  points->SetNumberOfPoints(static_cast<vtkIdType>(coordinates.size()));
  if (is_single) {
    host::put_points(coordinates, vtkFloatArray::SafeDownCast(points->GetData())->GetPointer(0));
  } else {
    host::put_points(coordinates, vtkDoubleArray::SafeDownCast(points->GetData())->GetPointer(0));
  }
  return points;
}

}  // namespace vtkdata
