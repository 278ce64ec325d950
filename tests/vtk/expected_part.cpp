#include "tests/vtk/expected_part.h"

#include "gtest/gtest.h"
#include <cmath>
#include <string>
#include <utility>
#include <vector>
#include <vtkCellData.h>
#include <vtkIdList.h>
#include <vtkNew.h>
#include <vtkPointData.h>

#include "host/display_names.h"
#include "host/undefined_value.h"
#include "tests/vtk/signed_volume.h"

namespace vtk_test {
namespace {

void expect_points(vtkUnstructuredGrid* grid, const host::Coordinates& nodes) {
  ASSERT_EQ(grid->GetNumberOfPoints(), static_cast<vtkIdType>(nodes.size()));
  vtkIdType wrong = 0;
  for (std::size_t n = 0; n < nodes.size(); ++n) {
    const double* point = grid->GetPoint(static_cast<vtkIdType>(n));
    for (std::size_t axis = 0; axis < 3; ++axis)
      wrong += point[axis] != static_cast<double>(nodes.axes[axis].values()[n]) ? 1 : 0;
  }
  EXPECT_EQ(wrong, 0);
}

void expect_cells(vtkUnstructuredGrid* grid, const std::vector<host::ElementBlock>& blocks) {
  vtkIdType cell = 0;
  vtkIdType wrong = 0;
  vtkNew<vtkIdList> ids;
  for (const host::ElementBlock& block : blocks) {
    for (std::size_t i = 0; i < block.size(); ++i, ++cell) {
      grid->GetCellPoints(cell, ids);
      std::vector<vtkIdType> corners(ids->begin(), ids->end());
      if (block.shape.name == "prism") {
        std::swap(corners[1], corners[2]);
        std::swap(corners[4], corners[5]);
      }
      for (vtkIdType& corner : corners) ++corner;
      wrong += std::vector<vtkIdType>(block.element(i).begin(), block.element(i).end()) != corners ? 1 : 0;
      if (block.shape.dimension == 3) wrong += vtk_test::signed_volume(grid->GetCell(cell)) > 0 ? 0 : 1;
    }
  }
  EXPECT_EQ(grid->GetNumberOfCells(), cell);
  EXPECT_EQ(wrong, 0);
}

void expect_values(vtkDataArray* array, host::Session& session, const host::Variable& variable, int part) {
  for (int component = 0; component < variable.components(); ++component) {
    const host::PartValues values = session.values(variable.number, part, component);
    if (values.availability != host::Availability::given) {
      EXPECT_EQ(array, nullptr) << variable.name;
      return;
    }
    ASSERT_NE(array, nullptr) << variable.name;
    ASSERT_EQ(array->GetNumberOfComponents(), variable.components());
    ASSERT_EQ(array->GetNumberOfTuples(), static_cast<vtkIdType>(values.values().size()));
    vtkIdType wrong = 0;
    for (vtkIdType i = 0; i < array->GetNumberOfTuples(); ++i) {
      const float wanted = values.values()[static_cast<std::size_t>(i)];
      const double found = array->GetComponent(i, component);
      const bool is_right =
          host::is_undefined(wanted) ? std::isnan(found) : found == static_cast<double>(wanted);
      wrong += is_right ? 0 : 1;
    }
    EXPECT_EQ(wrong, 0) << variable.name << " " << component;
  }
}

}  // namespace

void expect_part(vtkUnstructuredGrid* grid, host::Session& session, const host::Part& part) {
  expect_points(grid, session.coordinates(part.number));
  expect_cells(grid, session.elements(part.number));
  const std::vector<std::string> names = host::variable_names(session);
  for (const host::Variable& variable : session.variables()) {
    const char* name = names[static_cast<std::size_t>(variable.number) - 1].c_str();
    vtkDataArray* array = variable.location == host::Location::element ? grid->GetCellData()->GetArray(name)
                                                                       : grid->GetPointData()->GetArray(name);
    expect_values(array, session, variable, part.number);
  }
}

}  // namespace vtk_test
