#include "analysis/streamlines.h"

#include <cmath>
#include <numbers>
#include <vtkAppendFilter.h>
#include <vtkCellData.h>
#include <vtkCellDataToPointData.h>
#include <vtkNew.h>
#include <vtkPointData.h>
#include <vtkStreamTracer.h>
#include <vtkTubeFilter.h>

#include "analysis/cuts.h"

namespace analysis {
namespace {

constexpr double kLongest = 10;  // diagonals of the grid
constexpr vtkIdType kMostSteps = 50000;
constexpr double kStandstill = 1e-12;
constexpr int kTubeSides = 12;  // round enough to be shaded as round

vtkSmartPointer<vtkPoints> points_on(const SeedLine& line, int count) {
  auto points = vtkSmartPointer<vtkPoints>::New();
  points->SetDataTypeToDouble();
  for (int i = 0; i < count; ++i) {
    const double part = count == 1 ? 0.5 : static_cast<double>(i) / (count - 1);
    std::array<double, 3> point{};
    for (std::size_t axis = 0; axis < 3; ++axis)
      point[axis] = line.from[axis] + part * (line.to[axis] - line.from[axis]);
    points->InsertNextPoint(point.data());
  }
  return points;
}

// A spiral whose turns are as far apart as its points, in shells of equal volume.
vtkSmartPointer<vtkPoints> points_in(const SeedSphere& sphere, int count) {
  auto points = vtkSmartPointer<vtkPoints>::New();
  points->SetDataTypeToDouble();
  const double golden_angle = std::numbers::pi * (3 - std::sqrt(5.0));
  for (int i = 0; i < count; ++i) {
    const double height = 1 - (2 * i + 1.0) / count;
    const double part = std::fmod((i + 0.5) * std::numbers::sqrt2, 1.0);  // of the volume that lies inside
    const double radius = sphere.radius * std::cbrt(part);
    const double across = radius * std::sqrt(1 - height * height);
    points->InsertNextPoint(sphere.centre[0] + across * std::cos(golden_angle * i),
                            sphere.centre[1] + across * std::sin(golden_angle * i),
                            sphere.centre[2] + radius * height);
  }
  return points;
}

}  // namespace

vtkSmartPointer<vtkPoints> seed_points(const Seeds& seeds, int count) {
  if (const auto* line = std::get_if<SeedLine>(&seeds)) return points_on(*line, count);
  return points_in(std::get<SeedSphere>(seeds), count);
}

vtkSmartPointer<vtkUnstructuredGrid> joined(const std::vector<vtkSmartPointer<vtkUnstructuredGrid>>& grids) {
  vtkNew<vtkAppendFilter> filter;
  filter->MergePointsOn();
  for (const auto& grid : grids) filter->AddInputData(grid);
  filter->Update();
  return filter->GetOutput();
}

vtkSmartPointer<vtkPolyData> streamlines(vtkUnstructuredGrid* grid, vtkPoints* seeds) {
  vtkDataArray* scalars = grid->GetPointData()->GetScalars();
  if (scalars == nullptr) scalars = grid->GetCellData()->GetScalars();
  vtkNew<vtkCellDataToPointData> averaged;
  averaged->SetInputData(cells_with_values(grid, grid->GetPointData()->GetVectors()));
  vtkNew<vtkPolyData> source;
  source->SetPoints(seeds);
  vtkNew<vtkStreamTracer> tracer;
  tracer->SetInputConnection(averaged->GetOutputPort());
  tracer->SetSourceData(source);
  tracer->SetInputArrayToProcess(0, 0, 0, vtkDataObject::FIELD_ASSOCIATION_POINTS,
                                 vtkDataSetAttributes::VECTORS);
  tracer->SetIntegrationDirectionToBoth();
  tracer->SetIntegratorTypeToRungeKutta45();
  tracer->SetIntegrationStepUnit(vtkStreamTracer::CELL_LENGTH_UNIT);
  // Short steps: a line ends a step before it would leave the grid.
  tracer->SetInitialIntegrationStep(0.05);
  tracer->SetMinimumIntegrationStep(0.01);
  tracer->SetMaximumIntegrationStep(0.1);
  tracer->SetMaximumError(1e-6);
  tracer->SetMaximumPropagation(kLongest * grid->GetLength());
  tracer->SetMaximumNumberOfSteps(kMostSteps);
  tracer->SetTerminalSpeed(kStandstill);
  tracer->SetComputeVorticity(false);
  tracer->Update();
  vtkSmartPointer<vtkPolyData> lines = tracer->GetOutput();
  lines->GetPointData()->SetActiveScalars(scalars == nullptr ? nullptr : scalars->GetName());
  return lines;
}

vtkSmartPointer<vtkPolyData> tubes(vtkPolyData* lines, double radius) {
  vtkNew<vtkTubeFilter> filter;
  filter->SetInputData(lines);
  filter->SetRadius(radius);
  filter->SetNumberOfSides(kTubeSides);
  filter->CappingOn();
  filter->Update();
  return filter->GetOutput();
}

}  // namespace analysis
