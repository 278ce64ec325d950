#include "analysis/derived_variable.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <limits>
#include <stdexcept>
#include <vector>
#include <vtkCell.h>
#include <vtkCellType.h>
#include <vtkDataArrayRange.h>
#include <vtkDataObject.h>
#include <vtkGradientFilter.h>
#include <vtkNew.h>
#include <vtkPointData.h>

namespace analysis {
namespace {

constexpr char kSource[] = "source";
constexpr char kResult[] = "result";

vtkSmartPointer<vtkFloatArray> as_floats(vtkDataArray* values) {
  auto floats = vtkSmartPointer<vtkFloatArray>::New();
  floats->DeepCopy(values);
  return floats;
}

// Whether a point is a corner of a cell of the highest dimension in the grid.
std::vector<bool> contributing_points(vtkUnstructuredGrid* grid) {
  std::array<int, VTK_NUMBER_OF_CELL_TYPES> dimensions{};  // of the cell types that the grid has
  for (vtkIdType cell = 0; cell < grid->GetNumberOfCells(); ++cell) {
    int& dimension = dimensions[static_cast<std::size_t>(grid->GetCellType(cell))];
    if (dimension == 0) dimension = grid->GetCell(cell)->GetCellDimension();
  }
  const int highest = *std::max_element(dimensions.begin(), dimensions.end());
  std::vector<bool> contributing(static_cast<std::size_t>(grid->GetNumberOfPoints()));
  for (vtkIdType cell = 0; cell < grid->GetNumberOfCells(); ++cell) {
    if (dimensions[static_cast<std::size_t>(grid->GetCellType(cell))] < highest) continue;
    vtkIdType count = 0;
    const vtkIdType* corners = nullptr;
    grid->GetCellPoints(cell, count, corners);
    for (vtkIdType i = 0; i < count; ++i) contributing[static_cast<std::size_t>(corners[i])] = true;
  }
  return contributing;
}

// The filter gives zero at points that have no cell to derive in.
void leave_out_other_points(vtkUnstructuredGrid* grid, vtkFloatArray* values) {
  const std::vector<bool> contributing = contributing_points(grid);
  for (vtkIdType point = 0; point < grid->GetNumberOfPoints(); ++point) {
    if (contributing[static_cast<std::size_t>(point)]) continue;
    for (int c = 0; c < values->GetNumberOfComponents(); ++c)
      values->SetTypedComponent(point, c, std::numeric_limits<float>::quiet_NaN());
  }
}

vtkSmartPointer<vtkFloatArray> derivatives(vtkUnstructuredGrid* grid, vtkDataArray* values,
                                           Derivation derivation) {
  vtkNew<vtkUnstructuredGrid> bare;
  bare->CopyStructure(grid);
  // The filter names its input by the array's name, and the caller's array keeps its own.
  const auto source = vtkSmartPointer<vtkDataArray>::Take(values->NewInstance());
  source->ShallowCopy(values);
  source->SetName(kSource);
  bare->GetPointData()->AddArray(source);
  vtkNew<vtkGradientFilter> filter;
  filter->SetInputData(bare);
  filter->SetInputScalars(vtkDataObject::FIELD_ASSOCIATION_POINTS, kSource);
  filter->SetComputeGradient(derivation == Derivation::gradient);
  filter->SetComputeVorticity(derivation == Derivation::vorticity);
  filter->SetComputeQCriterion(derivation == Derivation::q_criterion);
  filter->SetResultArrayName(kResult);
  filter->SetVorticityArrayName(kResult);
  filter->SetQCriterionArrayName(kResult);
  filter->SetContributingCellOption(vtkGradientFilter::DataSetMax);
  filter->Update();
  vtkDataArray* result = filter->GetOutput()->GetPointData()->GetArray(kResult);
  if (result == nullptr) throw std::runtime_error("the gradient filter gave no values");
  vtkSmartPointer<vtkFloatArray> found = as_floats(result);
  leave_out_other_points(grid, found);
  return found;
}

}  // namespace

vtkSmartPointer<vtkFloatArray> magnitudes(vtkDataArray* vectors, const std::string& name) {
  auto lengths = vtkSmartPointer<vtkFloatArray>::New();
  lengths->SetName(name.c_str());
  lengths->SetNumberOfValues(vectors->GetNumberOfTuples());
  float* to = lengths->GetPointer(0);
  for (const auto vector : vtk::DataArrayTupleRange<3>(vectors)) {
    double squares = 0;
    for (const auto component : vector) {
      const double value = component;
      squares += value * value;
    }
    *to++ = static_cast<float>(std::sqrt(squares));
  }
  return lengths;
}

vtkSmartPointer<vtkFloatArray> derive(vtkUnstructuredGrid* grid, vtkDataArray* values, Derivation derivation,
                                      const std::string& name) {
  const int components = takes_vector(derivation) ? 3 : 1;
  if (values == nullptr || values->GetNumberOfComponents() != components ||
      values->GetNumberOfTuples() != grid->GetNumberOfPoints())
    throw std::invalid_argument(std::string(derivation_word(derivation)) + " needs " +
                                (components == 3 ? "a vector" : "a scalar") + " per node");
  const vtkSmartPointer<vtkFloatArray> derived =
      needs_elements(derivation) ? derivatives(grid, values, derivation) : magnitudes(values, name);
  derived->SetName(name.c_str());
  return derived;
}

}  // namespace analysis
