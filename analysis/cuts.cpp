#include "analysis/cuts.h"

#include <cmath>
#include <cstddef>
#include <vector>
#include <vtkCellData.h>
#include <vtkContourFilter.h>
#include <vtkCutter.h>
#include <vtkIdList.h>
#include <vtkNew.h>
#include <vtkPlane.h>
#include <vtkPointData.h>

namespace analysis {
namespace {

constexpr char kContoured[] = "values of the cut";

std::vector<bool> finite_points(vtkDataArray* values) {
  std::vector<bool> finite(static_cast<std::size_t>(values->GetNumberOfTuples()));
  for (vtkIdType i = 0; i < values->GetNumberOfTuples(); ++i) {
    double sum = 0;
    for (int c = 0; c < values->GetNumberOfComponents(); ++c) sum += values->GetComponent(i, c);
    finite[static_cast<std::size_t>(i)] = std::isfinite(sum);
  }
  return finite;
}

// Without the points and lines that are left where a cell is just touched, so that values of cells and
// polygons have the same numbers.
vtkSmartPointer<vtkPolyData> polygons_of(vtkPolyData* cut) {
  const vtkIdType before = cut->GetNumberOfVerts() + cut->GetNumberOfLines();
  if (before == 0) return cut;
  auto polygons = vtkSmartPointer<vtkPolyData>::New();
  polygons->SetPoints(cut->GetPoints());
  polygons->GetPointData()->ShallowCopy(cut->GetPointData());
  polygons->SetPolys(cut->GetPolys());
  polygons->GetCellData()->CopyAllocate(cut->GetCellData(), cut->GetNumberOfPolys());
  for (vtkIdType i = 0; i < cut->GetNumberOfPolys(); ++i)
    polygons->GetCellData()->CopyData(cut->GetCellData(), before + i, i);
  return polygons;
}

}  // namespace

vtkSmartPointer<vtkUnstructuredGrid> cells_with_values(vtkUnstructuredGrid* grid, vtkDataArray* values) {
  const std::vector<bool> finite = finite_points(values);
  auto kept = vtkSmartPointer<vtkUnstructuredGrid>::New();
  kept->SetPoints(grid->GetPoints());
  kept->GetPointData()->ShallowCopy(grid->GetPointData());
  kept->AllocateExact(grid->GetNumberOfCells(), 0);
  kept->GetCellData()->CopyAllocate(grid->GetCellData(), grid->GetNumberOfCells());
  vtkNew<vtkIdList> corners;
  for (vtkIdType cell = 0; cell < grid->GetNumberOfCells(); ++cell) {
    grid->GetCellPoints(cell, corners);
    bool is_whole = true;
    for (const vtkIdType corner : *corners) is_whole = is_whole && finite[static_cast<std::size_t>(corner)];
    if (!is_whole) continue;
    const vtkIdType to = kept->InsertNextCell(grid->GetCellType(cell), corners);
    kept->GetCellData()->CopyData(grid->GetCellData(), cell, to);
  }
  return kept;
}

vtkSmartPointer<vtkPolyData> cut_by_plane(vtkUnstructuredGrid* grid, const CutPlane& plane) {
  vtkNew<vtkPlane> function;
  function->SetOrigin(plane.origin.data());
  function->SetNormal(plane.normal.data());
  vtkNew<vtkCutter> cutter;
  cutter->SetInputData(grid);
  cutter->SetCutFunction(function);
  cutter->GenerateTrianglesOff();
  cutter->Update();
  return polygons_of(cutter->GetOutput());
}

vtkSmartPointer<vtkPolyData> cut_by_value(vtkUnstructuredGrid* grid, vtkDataArray* values, double value) {
  vtkSmartPointer<vtkDataArray> colours = grid->GetPointData()->GetScalars();
  const vtkSmartPointer<vtkUnstructuredGrid> whole = cells_with_values(grid, values);
  vtkSmartPointer<vtkDataArray> contoured = vtkSmartPointer<vtkDataArray>::Take(values->NewInstance());
  contoured->ShallowCopy(values);
  contoured->SetName(kContoured);
  whole->GetPointData()->AddArray(contoured);
  vtkNew<vtkContourFilter> filter;
  filter->SetInputData(whole);
  filter->SetInputArrayToProcess(0, 0, 0, vtkDataObject::FIELD_ASSOCIATION_POINTS, kContoured);
  filter->SetValue(0, value);
  filter->ComputeNormalsOff();
  filter->ComputeGradientsOff();
  filter->ComputeScalarsOff();
  filter->GenerateTrianglesOff();
  filter->Update();
  vtkSmartPointer<vtkPolyData> surface = polygons_of(filter->GetOutput());
  surface->GetPointData()->SetActiveScalars(colours == nullptr ? nullptr : colours->GetName());
  return surface;
}

}  // namespace analysis
