#include "analysis/arrows.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <set>
#include <vtkArrowSource.h>
#include <vtkDataArray.h>
#include <vtkGlyph3D.h>
#include <vtkNew.h>
#include <vtkPointData.h>

namespace analysis {
namespace {

using Vector = std::array<double, 3>;
using Cube = std::array<std::int64_t, 3>;

double length(vtkDataArray* vectors, vtkIdType i) {
  Vector vector{};
  vectors->GetTuple(i, vector.data());
  return std::hypot(vector[0], vector[1], vector[2]);
}

}  // namespace

vtkSmartPointer<vtkPolyData> thinned(vtkPolyData* surface, double distance) {
  vtkPointData* values = surface->GetPointData();
  vtkDataArray* vectors = values->GetVectors();
  auto kept = vtkSmartPointer<vtkPolyData>::New();
  vtkNew<vtkPoints> points;
  kept->SetPoints(points);
  if (vectors == nullptr) return kept;
  points->SetDataType(surface->GetPoints()->GetDataType());
  kept->GetPointData()->CopyAllocate(values);
  std::set<Cube> taken;
  for (vtkIdType i = 0; i < surface->GetNumberOfPoints(); ++i) {
    Vector point{};
    surface->GetPoint(i, point.data());
    const double size = length(vectors, i);
    if (!(size > 0) || !std::isfinite(size + point[0] + point[1] + point[2])) continue;
    Cube cube{};
    for (std::size_t axis = 0; axis < 3; ++axis)
      cube[axis] = static_cast<std::int64_t>(std::floor(point[axis] / distance));
    if (taken.insert(cube).second)
      kept->GetPointData()->CopyData(values, i, points->InsertNextPoint(point.data()));
  }
  return kept;
}

double longest_vector(vtkPolyData* points) {
  vtkDataArray* vectors = points->GetPointData()->GetVectors();
  double longest = 0;
  for (vtkIdType i = 0; i < points->GetNumberOfPoints(); ++i) longest = std::max(longest, length(vectors, i));
  return longest;
}

vtkSmartPointer<vtkPolyData> arrows(vtkPolyData* points, double scale) {
  vtkNew<vtkArrowSource> arrow;
  arrow->SetTipResolution(12);
  arrow->SetShaftResolution(8);
  arrow->SetTipLength(0.35);
  arrow->SetTipRadius(0.12);
  arrow->SetShaftRadius(0.04);
  vtkNew<vtkGlyph3D> glyphs;
  glyphs->SetInputData(points);
  glyphs->SetSourceConnection(arrow->GetOutputPort());
  glyphs->SetVectorModeToUseVector();
  glyphs->SetScaleModeToScaleByVector();
  glyphs->SetScaleFactor(scale);
  glyphs->OrientOn();
  glyphs->Update();
  return glyphs->GetOutput();
}

}  // namespace analysis
