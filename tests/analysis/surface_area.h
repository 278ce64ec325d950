// The area of surfaces that tests have cut.
#pragma once

#include <array>
#include <cmath>
#include <vtkCell.h>
#include <vtkPoints.h>
#include <vtkPolyData.h>

namespace analysis_test {

// Of convex polygons.
inline double area(vtkPolyData* surface) {
  double sum = 0;
  for (vtkIdType cell = 0; cell < surface->GetNumberOfCells(); ++cell) {
    vtkPoints* corners = surface->GetCell(cell)->GetPoints();
    std::array<double, 3> normal{};
    for (vtkIdType i = 0; i < corners->GetNumberOfPoints(); ++i) {
      std::array<double, 3> a{};
      std::array<double, 3> b{};
      corners->GetPoint(i, a.data());
      corners->GetPoint((i + 1) % corners->GetNumberOfPoints(), b.data());
      normal[0] += (a[1] * b[2] - a[2] * b[1]) / 2;
      normal[1] += (a[2] * b[0] - a[0] * b[2]) / 2;
      normal[2] += (a[0] * b[1] - a[1] * b[0]) / 2;
    }
    sum += std::hypot(normal[0], normal[1], normal[2]);
  }
  return sum;
}

}  // namespace analysis_test
