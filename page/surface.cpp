#include "page/surface.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <numeric>
#include <tuple>
#include <vtkCellArray.h>
#include <vtkCellData.h>
#include <vtkDataArray.h>
#include <vtkFloatArray.h>
#include <vtkGeometryFilter.h>
#include <vtkIdTypeArray.h>
#include <vtkNew.h>
#include <vtkPointData.h>
#include <vtkPolyData.h>

#include "analysis/cuts.h"

namespace page {
namespace {

constexpr char kElementNumbers[] = "element numbers";

// Faces with fewer corners than a triangle, or with more than a page can tell, are none.
constexpr vtkIdType kFewestCorners = 3;
constexpr vtkIdType kMostCorners = 255;

vtkIdType number_at(vtkDataArray* numbers, vtkIdType place) {
  return numbers == nullptr ? place : static_cast<vtkIdTypeArray*>(numbers)->GetValue(place);
}

void add_polygons(vtkPolyData* data, vtkDataArray* elements, Faces& faces) {
  vtkCellArray* polygons = data->GetPolys();
  const vtkIdType before = data->GetNumberOfVerts() + data->GetNumberOfLines();
  const vtkIdType count = polygons->GetNumberOfCells();
  faces.sizes.reserve(static_cast<std::size_t>(count));
  faces.elements.reserve(static_cast<std::size_t>(count));
  faces.corners.reserve(static_cast<std::size_t>(polygons->GetNumberOfConnectivityIds()));
  for (vtkIdType face = 0; face < count; ++face) {
    vtkIdType size = 0;
    const vtkIdType* corners = nullptr;
    polygons->GetCellAtId(face, size, corners);
    if (size < kFewestCorners || size > kMostCorners) continue;
    faces.sizes.push_back(static_cast<std::uint8_t>(size));
    faces.elements.push_back(static_cast<int>(number_at(elements, before + face)) + 1);
    for (vtkIdType i = 0; i < size; ++i) faces.corners.push_back(static_cast<int>(corners[i]));
  }
}

void add_points(vtkPolyData* data, std::vector<float>& points) {
  const vtkIdType count = data->GetNumberOfPoints();
  points.resize(static_cast<std::size_t>(count) * 3);
  for (vtkIdType i = 0; i < count; ++i) {
    std::array<double, 3> point{};
    data->GetPoint(i, point.data());
    for (std::size_t axis = 0; axis < 3; ++axis)
      points[static_cast<std::size_t>(i) * 3 + axis] = static_cast<float>(point[axis]);
  }
}

// Brings the points into the order of their nodes, in which neighbours have neighbouring numbers and values.
void sort_points(Surface& surface) {
  std::vector<int>& nodes = surface.faces.nodes;
  std::vector<int> order(nodes.size());
  std::iota(order.begin(), order.end(), 0);
  std::sort(order.begin(), order.end(), [&](int a, int b) {
    return nodes[static_cast<std::size_t>(a)] < nodes[static_cast<std::size_t>(b)];
  });
  std::vector<int> places(order.size());
  std::vector<int> sorted(order.size());
  std::vector<float> points(surface.points.size());
  for (std::size_t to = 0; to < order.size(); ++to) {
    const auto from = static_cast<std::size_t>(order[to]);
    places[from] = static_cast<int>(to);
    sorted[to] = nodes[from];
    std::copy_n(surface.points.begin() + static_cast<std::ptrdiff_t>(3 * from), 3,
                points.begin() + static_cast<std::ptrdiff_t>(3 * to));
  }
  for (int& corner : surface.faces.corners) corner = places[static_cast<std::size_t>(corner)];
  nodes = std::move(sorted);
  surface.points = std::move(points);
}

std::vector<SurfaceValues> arrays_of(vtkFieldData* data, bool per_face) {
  std::vector<SurfaceValues> all;
  for (int i = 0; i < data->GetNumberOfArrays(); ++i) {
    auto* array = vtkFloatArray::SafeDownCast(data->GetAbstractArray(i));
    if (array == nullptr) continue;
    const auto components = static_cast<std::size_t>(array->GetNumberOfComponents());
    const auto count = static_cast<std::size_t>(array->GetNumberOfTuples());
    SurfaceValues values{per_face, std::vector<std::vector<float>>(components, std::vector<float>(count))};
    const float* from = count == 0 ? nullptr : array->GetPointer(0);
    for (std::size_t place = 0; place < count; ++place) {
      for (std::size_t c = 0; c < components; ++c) values.components[c][place] = *from++;
    }
    all.push_back(std::move(values));
  }
  return all;
}

}  // namespace

std::vector<float> component_of(const SurfaceValues& values, std::optional<int> component) {
  if (values.components.size() == 1) return values.components.front();
  if (component) return values.components[static_cast<std::size_t>(*component)];
  const auto& [x, y, z] = std::tie(values.components[0], values.components[1], values.components[2]);
  std::vector<float> lengths(x.size());
  for (std::size_t i = 0; i < lengths.size(); ++i) lengths[i] = std::hypot(x[i], y[i], z[i]);
  return lengths;
}

Surface outer_surface(vtkUnstructuredGrid* grid) {
  vtkNew<vtkUnstructuredGrid> bare;
  bare->CopyStructure(grid);
  vtkNew<vtkGeometryFilter> filter;
  filter->SetInputData(bare);
  filter->PassThroughCellIdsOn();
  filter->PassThroughPointIdsOn();
  filter->Update();
  vtkPolyData* data = filter->GetOutput();
  Surface surface;
  if (data->GetNumberOfPolys() == 0) return surface;
  add_polygons(data, data->GetCellData()->GetArray(filter->GetOriginalCellIdsName()), surface.faces);
  add_points(data, surface.points);
  vtkDataArray* nodes = data->GetPointData()->GetArray(filter->GetOriginalPointIdsName());
  for (vtkIdType i = 0; i < data->GetNumberOfPoints(); ++i)
    surface.faces.nodes.push_back(static_cast<int>(number_at(nodes, i)) + 1);
  sort_points(surface);
  return surface;
}

std::vector<float> pick_values(const std::vector<int>& numbers, const float* values, int components,
                               int component) {
  std::vector<float> picked(numbers.size());
  std::transform(numbers.begin(), numbers.end(), picked.begin(), [=](int number) {
    return values[static_cast<std::ptrdiff_t>(number - 1) * components + component];
  });
  return picked;
}

CutSurface cut(vtkUnstructuredGrid* grid, int axis, double position) {
  vtkNew<vtkIdTypeArray> numbers;
  numbers->SetName(kElementNumbers);
  numbers->SetNumberOfValues(grid->GetNumberOfCells());
  std::iota(numbers->GetPointer(0), numbers->GetPointer(0) + grid->GetNumberOfCells(), vtkIdType{0});
  vtkNew<vtkUnstructuredGrid> numbered;
  numbered->ShallowCopy(grid);
  numbered->GetCellData()->AddArray(numbers);
  analysis::CutPlane plane;
  plane.origin[static_cast<std::size_t>(axis)] = position;
  plane.normal[static_cast<std::size_t>(axis)] = 1;
  const vtkSmartPointer<vtkPolyData> data = analysis::cut_by_plane(numbered, plane);
  CutSurface made;
  if (data->GetNumberOfPolys() == 0) return made;
  vtkDataArray* elements = data->GetCellData()->GetArray(kElementNumbers);
  add_polygons(data, elements, made.surface.faces);
  add_points(data, made.surface.points);
  made.values = arrays_of(data->GetPointData(), false);
  std::vector<SurfaceValues> per_face = arrays_of(data->GetCellData(), true);
  std::move(per_face.begin(), per_face.end(), std::back_inserter(made.values));
  return made;
}

}  // namespace page
