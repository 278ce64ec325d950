#include "vtk/part_grid.h"

#include <vtkCellData.h>
#include <vtkPointData.h>

#include "vtk/points.h"

namespace vtkdata {

vtkSmartPointer<vtkUnstructuredGrid> make_grid(vtkPoints* points, const Cells& cells) {
  auto grid = vtkSmartPointer<vtkUnstructuredGrid>::New();
  grid->SetPoints(points);
  grid->SetCells(cells.types, cells.connectivity);
  return grid;
}

vtkSmartPointer<vtkUnstructuredGrid> make_part_grid(host::Session& session, int part, Precision precision) {
  const vtkSmartPointer<vtkPoints> points = make_points(session.coordinates(part), precision);
  return make_grid(points, make_cells(session.elements(part)));
}

bool add_values(vtkUnstructuredGrid* grid, host::Session& session, int variable, int part,
                const std::string& name, Precision precision) {
  const vtkSmartPointer<vtkDataArray> values = make_values(session, variable, part, name, precision);
  if (!values) return false;
  if (session.variable(variable).location == host::Location::element) {
    grid->GetCellData()->AddArray(values);
  } else {
    grid->GetPointData()->AddArray(values);
  }
  return true;
}

}  // namespace vtkdata
