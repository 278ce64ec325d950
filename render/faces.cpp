#include "render/faces.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <span>
#include <vector>
#include <vtkCellArray.h>
#include <vtkCellData.h>
#include <vtkFeatureEdges.h>
#include <vtkFloatArray.h>
#include <vtkGeometryFilter.h>
#include <vtkNew.h>
#include <vtkPointData.h>
#include <vtkPolyDataNormals.h>

namespace render {
namespace {

constexpr double kSharpAngle = 35;  // degrees between faces with a visible edge

enum class Values : unsigned char { defined, partial, undefined };

std::span<const float> values_of(vtkDataArray* scalars) {
  auto* array = vtkFloatArray::SafeDownCast(scalars);
  if (array == nullptr) return {};
  return {array->GetPointer(0), static_cast<std::size_t>(array->GetNumberOfValues())};
}

std::vector<Values> classes_by_cells(std::span<const float> values) {
  std::vector<Values> classes(values.size());
  std::transform(values.begin(), values.end(), classes.begin(),
                 [](float value) { return std::isfinite(value) ? Values::defined : Values::undefined; });
  return classes;
}

std::vector<Values> classes_by_points(vtkCellArray* polygons, std::span<const float> values) {
  std::vector<Values> classes(static_cast<std::size_t>(polygons->GetNumberOfCells()));
  for (std::size_t i = 0; i < classes.size(); ++i) {
    vtkIdType count = 0;
    const vtkIdType* corners = nullptr;
    polygons->GetCellAtId(static_cast<vtkIdType>(i), count, corners);
    const auto finite = std::count_if(corners, corners + count, [&](vtkIdType corner) {
      return std::isfinite(values[static_cast<std::size_t>(corner)]);
    });
    classes[i] = finite == count ? Values::defined : finite > 0 ? Values::partial : Values::undefined;
  }
  return classes;
}

// The faces of one class. Their points are shared, so the others' points stay among them.
vtkSmartPointer<vtkPolyData> extract(vtkPolyData* faces, const std::vector<Values>& classes, Values wanted) {
  vtkCellArray* polygons = faces->GetPolys();
  vtkNew<vtkCellArray> kept;
  auto part = vtkSmartPointer<vtkPolyData>::New();
  part->GetCellData()->CopyAllocate(faces->GetCellData());
  for (std::size_t i = 0; i < classes.size(); ++i) {
    if (classes[i] != wanted) continue;
    vtkIdType count = 0;
    const vtkIdType* corners = nullptr;
    polygons->GetCellAtId(static_cast<vtkIdType>(i), count, corners);
    const vtkIdType to = kept->InsertNextCell(count, corners);
    part->GetCellData()->CopyData(faces->GetCellData(), static_cast<vtkIdType>(i), to);
  }
  part->SetPoints(faces->GetPoints());
  part->GetPointData()->ShallowCopy(faces->GetPointData());
  part->SetPolys(kept);
  return part;
}

}  // namespace

vtkSmartPointer<vtkPolyData> outer_faces(vtkUnstructuredGrid* grid, vtkDataArray* scalars, bool per_cell,
                                         vtkDataArray* vectors) {
  vtkNew<vtkUnstructuredGrid> bare;
  bare->CopyStructure(grid);
  if (scalars != nullptr && per_cell) bare->GetCellData()->SetScalars(scalars);
  if (scalars != nullptr && !per_cell) bare->GetPointData()->SetScalars(scalars);
  if (vectors != nullptr) bare->GetPointData()->SetVectors(vectors);
  vtkNew<vtkGeometryFilter> filter;
  filter->SetInputData(bare);
  filter->Update();
  return filter->GetOutput();
}

vtkSmartPointer<vtkPolyData> with_normals(vtkPolyData* faces) {
  vtkNew<vtkPolyDataNormals> normals;
  normals->SetInputData(faces);
  normals->SetFeatureAngle(kSharpAngle);
  normals->ConsistencyOff();
  normals->Update();
  return normals->GetOutput();
}

vtkSmartPointer<vtkPolyData> outline(vtkPolyData* faces) {
  vtkNew<vtkFeatureEdges> edges;
  edges->SetInputData(faces);
  edges->SetFeatureAngle(kSharpAngle);
  edges->ColoringOff();
  edges->ManifoldEdgesOff();
  edges->NonManifoldEdgesOff();
  edges->Update();
  return edges->GetOutput();
}

FacesByValues split_by_values(vtkPolyData* faces) {
  const std::span<const float> point_values = values_of(faces->GetPointData()->GetScalars());
  const std::span<const float> cell_values = values_of(faces->GetCellData()->GetScalars());
  const auto is_finite = [](float value) { return std::isfinite(value); };
  if (std::all_of(point_values.begin(), point_values.end(), is_finite) &&
      std::all_of(cell_values.begin(), cell_values.end(), is_finite)) {
    return {faces, vtkSmartPointer<vtkPolyData>::New(), vtkSmartPointer<vtkPolyData>::New()};
  }
  const std::vector<Values> classes = point_values.empty()
                                          ? classes_by_cells(cell_values)
                                          : classes_by_points(faces->GetPolys(), point_values);
  return {extract(faces, classes, Values::defined), extract(faces, classes, Values::partial),
          extract(faces, classes, Values::undefined)};
}

}  // namespace render
