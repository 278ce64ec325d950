// Cuts through the elements of a grid: planes, and surfaces of one value.
#pragma once

#include <array>
#include <vtkDataArray.h>
#include <vtkPolyData.h>
#include <vtkSmartPointer.h>
#include <vtkUnstructuredGrid.h>

namespace analysis {

struct CutPlane {
  std::array<double, 3> origin{};
  std::array<double, 3> normal{};  // of any length but zero
};

// Where the cells meet the plane, as polygons, with the grid's values there.
vtkSmartPointer<vtkPolyData> cut_by_plane(vtkUnstructuredGrid* grid, const CutPlane& plane);

// Where `values`, one per point of the grid, are `value`, as polygons, with the grid's values there. Cells
// with a corner where `values` are undefined are left out.
vtkSmartPointer<vtkPolyData> cut_by_value(vtkUnstructuredGrid* grid, vtkDataArray* values, double value);

// The cells whose corners all have finite values in `values`, of any number of components, with all points.
vtkSmartPointer<vtkUnstructuredGrid> cells_with_values(vtkUnstructuredGrid* grid, vtkDataArray* values);

}  // namespace analysis
