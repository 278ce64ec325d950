// Grids for the tests of cuts: a cube of unit size out of hexahedra.
#pragma once

#include <array>
#include <string>
#include <vtkFloatArray.h>
#include <vtkNew.h>
#include <vtkPointData.h>
#include <vtkPoints.h>
#include <vtkSmartPointer.h>
#include <vtkUnstructuredGrid.h>

namespace analysis_test {

// n x n x n hexahedra from `low` to 1 more along each axis.
inline vtkSmartPointer<vtkUnstructuredGrid> unit_cube(int n, std::array<double, 3> low = {0, 0, 0}) {
  auto grid = vtkSmartPointer<vtkUnstructuredGrid>::New();
  vtkNew<vtkPoints> points;
  points->SetDataTypeToDouble();
  for (int k = 0; k <= n; ++k) {
    for (int j = 0; j <= n; ++j) {
      for (int i = 0; i <= n; ++i)
        points->InsertNextPoint(low[0] + double(i) / n, low[1] + double(j) / n, low[2] + double(k) / n);
    }
  }
  grid->SetPoints(points);
  const auto at = [n](int i, int j, int k) { return vtkIdType(i + (n + 1) * (j + (n + 1) * k)); };
  for (int k = 0; k < n; ++k) {
    for (int j = 0; j < n; ++j) {
      for (int i = 0; i < n; ++i) {
        const std::array<vtkIdType, 8> corners = {
            at(i, j, k),     at(i + 1, j, k),     at(i + 1, j + 1, k),     at(i, j + 1, k),
            at(i, j, k + 1), at(i + 1, j, k + 1), at(i + 1, j + 1, k + 1), at(i, j + 1, k + 1)};
        grid->InsertNextCell(VTK_HEXAHEDRON, 8, corners.data());
      }
    }
  }
  return grid;
}

// The values of f(x, y, z), an array, at the points of a data set.
template <class Data, class Function>
vtkSmartPointer<vtkFloatArray> at_points(Data* data, const std::string& name, Function f) {
  auto values = vtkSmartPointer<vtkFloatArray>::New();
  values->SetName(name.c_str());
  std::array<double, 3> at{};
  values->SetNumberOfComponents(static_cast<int>(f(0.0, 0.0, 0.0).size()));
  for (vtkIdType i = 0; i < data->GetNumberOfPoints(); ++i) {
    data->GetPoint(i, at.data());
    values->InsertNextTuple(f(at[0], at[1], at[2]).data());
  }
  return values;
}

}  // namespace analysis_test
