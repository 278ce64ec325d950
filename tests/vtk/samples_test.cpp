// Every part of every sample, at each step: points, cells and values are those of the host library, and no
// cell is inside out.
#include "samples/samples.h"

#include "gtest/gtest.h"
#include <cmath>
#include <string>
#include <vector>
#include <vtkCellData.h>
#include <vtkIdList.h>
#include <vtkNew.h>
#include <vtkPointData.h>

#include "host/undefined_value.h"
#include "testkit/temporary_directory.h"
#include "tests/vtk/open_file.h"
#include "tests/vtk/signed_volume.h"
#include "vtk/part_grid.h"

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

void expect_values(vtkUnstructuredGrid* grid, host::Session& session, const host::Variable& variable,
                   int part) {
  ASSERT_TRUE(vtkdata::add_values(grid, session, variable.number, part, variable.name)) << variable.name;
  vtkDataArray* array = variable.location == host::Location::element
                            ? grid->GetCellData()->GetArray(variable.name.c_str())
                            : grid->GetPointData()->GetArray(variable.name.c_str());
  ASSERT_NE(array, nullptr) << variable.name;
  for (int component = 0; component < variable.components(); ++component) {
    const host::PartValues values = session.values(variable.number, part, component);
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

TEST(SamplesInVtk, AreWhatTheHostLibraryGives) {
  const testkit::TemporaryDirectory directory;
  for (const samples::SampleInfo& sample : samples::write_samples(directory.path())) {
    vtk_test::Reader reader;
    host::Session& session = reader.session();
    session.open(sample.file);
    for (const int step : {0, session.step_count() - 1}) {
      session.select_step(step);
      for (const host::Part& part : session.parts()) {
        // The whole mesh of a sector stays in its file's radius, angle and height.
        if (sample.name == "sector" && part.kind == host::PartKind::whole) continue;
        SCOPED_TRACE(sample.name + " " + part.name + " at step " + std::to_string(step));
        const auto grid = vtkdata::make_part_grid(session, part.number);
        expect_points(grid, session.coordinates(part.number));
        expect_cells(grid, session.elements(part.number));
        for (const host::Variable& variable : session.variables())
          expect_values(grid, session, variable, part.number);
      }
    }
  }
}

}  // namespace
