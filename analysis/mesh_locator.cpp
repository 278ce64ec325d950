#include "analysis/mesh_locator.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <vtkGenericCell.h>
#include <vtkNew.h>
#include <vtkStaticCellLocator.h>

#include "vtk/part_grid.h"
#include "vtk/points.h"

namespace analysis {

struct MeshLocator::Mesh {
  Mesh(host::Session& session, int number, const IsCylindrical& is_cylindrical)
      : part(number), region_set(session.part(number).region_set.value_or(0)) {
    grid = vtkdata::make_grid(vtkdata::make_points(cartesian_coordinates(session, number, is_cylindrical)),
                              vtkdata::make_cells(session.elements(number)));
    if (grid->GetNumberOfCells() == 0) return;
    locator->SetDataSet(grid);
    locator->BuildLocator();
    tolerance = kTolerance * grid->GetLength();
  }

  // The number of the element that contains the point, or is within the tolerance; -1 without one. Sets
  // `local`, the point's coordinates in the element.
  vtkIdType find(Vec3 point, Vec3& local) {
    std::array<double, kMostNodes> weights{};
    int ignored = 0;
    const vtkIdType inside = locator->FindCell(point.data(), 0, cell, ignored, local.data(), weights.data());
    if (inside >= 0) return inside;
    Vec3 closest{};
    vtkIdType near = -1;
    double distance2 = 0;
    if (locator->FindClosestPointWithinRadius(point.data(), tolerance, closest.data(), cell, near, ignored,
                                              distance2) == 0)
      return -1;
    grid->GetCell(near, cell);
    Vec3 unused{};
    cell->EvaluatePosition(closest.data(), unused.data(), ignored, local.data(), distance2, weights.data());
    for (double& coordinate : local) coordinate = std::clamp(coordinate, 0.0, 1.0);
    return near;
  }

  std::optional<ElementAt> element_at(const Vec3& point) {
    if (grid->GetNumberOfCells() == 0) return std::nullopt;
    ElementAt found;
    Vec3 local{};
    found.element = find(point, local);
    if (found.element < 0) return std::nullopt;
    grid->GetCell(found.element, cell);
    refine(point, local);
    cell->InterpolateFunctions(local.data(), found.weight.data());
    found.part = part;
    found.region_set = region_set;
    found.nodes = static_cast<int>(cell->GetNumberOfPoints());
    for (int i = 0; i < found.nodes; ++i)
      found.node[static_cast<std::size_t>(i)] = static_cast<std::int32_t>(cell->GetPointId(i));
    found.size = std::sqrt(cell->GetLength2());
    return found;
  }

  // VTK stops its iteration when a step is below a thousandth of the element: one more step by the
  // derivatives of the shape functions makes the place as exact as the coordinates are.
  void refine(const Vec3& point, Vec3& local) {
    std::array<double, kMostNodes> weights{};
    std::array<double, 3 * kMostNodes> derivatives{};
    cell->InterpolateFunctions(local.data(), weights.data());
    cell->InterpolateDerivs(local.data(), derivatives.data());
    const vtkIdType nodes = cell->GetNumberOfPoints();
    Vec3 missing = point;
    std::array<Vec3, 3> slopes{};  // of the place by each local coordinate
    for (vtkIdType i = 0; i < nodes; ++i) {
      Vec3 corner{};
      cell->GetPoints()->GetPoint(i, corner.data());
      missing = missing - weights[static_cast<std::size_t>(i)] * corner;
      for (std::size_t axis = 0; axis < 3; ++axis)
        slopes[axis] +=
            derivatives[axis * static_cast<std::size_t>(nodes) + static_cast<std::size_t>(i)] * corner;
    }
    const double volume = dot(slopes[0], cross(slopes[1], slopes[2]));
    if (volume == 0) return;
    const Vec3 step = {dot(missing, cross(slopes[1], slopes[2])) / volume,
                       dot(slopes[0], cross(missing, slopes[2])) / volume,
                       dot(slopes[0], cross(slopes[1], missing)) / volume};
    constexpr double kLongest = 1e-2;  // beyond it is no refinement
    if (length(step) < kLongest) local += step;
  }

  static constexpr std::size_t kMostNodes = 8;

  int part;
  int region_set;
  double tolerance = 0;
  vtkSmartPointer<vtkUnstructuredGrid> grid;
  vtkNew<vtkStaticCellLocator> locator;
  vtkNew<vtkGenericCell> cell;
};

MeshLocator::MeshLocator(host::Session& session, const IsCylindrical& is_cylindrical) {
  for (const int part : whole_parts(session))
    meshes_.push_back(std::make_unique<Mesh>(session, part, is_cylindrical));
}

MeshLocator::~MeshLocator() = default;

std::vector<ElementAt> MeshLocator::find(const Vec3& point) {
  std::vector<ElementAt> found;
  for (const std::unique_ptr<Mesh>& mesh : meshes_) {
    std::optional<ElementAt> element = mesh->element_at(point);
    if (element) found.push_back(*element);
  }
  std::stable_sort(found.begin(), found.end(),
                   [](const ElementAt& a, const ElementAt& b) { return a.size < b.size; });
  return found;
}

}  // namespace analysis
