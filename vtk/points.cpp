#include "vtk/points.h"

#include <span>
#include <vtkAOSDataArrayTemplate.h>
#include <vtkDoubleArray.h>
#include <vtkFloatArray.h>

namespace vtkdata {
namespace {

template <typename Real>
void interleave(const host::Coordinates& coordinates, Real* to) {
  const std::span<const float> x = coordinates.x();
  const std::span<const float> y = coordinates.y();
  const std::span<const float> z = coordinates.z();
  for (std::size_t i = 0; i < x.size(); ++i) {
    to[3 * i] = static_cast<Real>(x[i]);
    to[3 * i + 1] = static_cast<Real>(y[i]);
    to[3 * i + 2] = static_cast<Real>(z[i]);
  }
}

}  // namespace

vtkSmartPointer<vtkPoints> make_points(const host::Coordinates& coordinates, Precision precision) {
  auto points = vtkSmartPointer<vtkPoints>::New();
  const bool is_single = precision == Precision::single_width;
  points->SetDataType(is_single ? VTK_FLOAT : VTK_DOUBLE);
  points->SetNumberOfPoints(static_cast<vtkIdType>(coordinates.size()));
  if (is_single) {
    interleave(coordinates, vtkFloatArray::SafeDownCast(points->GetData())->GetPointer(0));
  } else {
    interleave(coordinates, vtkDoubleArray::SafeDownCast(points->GetData())->GetPointer(0));
  }
  return points;
}

}  // namespace vtkdata
