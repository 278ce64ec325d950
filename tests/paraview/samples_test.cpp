// Compares every sample at every step between ParaView's reader and the host library.
#include "samples/samples.h"

#include <cmath>
#include <gtest/gtest.h>
#include <map>
#include <vtkCellData.h>
#include <vtkCellType.h>
#include <vtkFloatArray.h>
#include <vtkPointData.h>

#include "host/library.h"
#include "host/plugin_path.h"
#include "host/session.h"
#include "host/undefined_value.h"
#include "testkit/temporary_directory.h"
#include "tests/paraview/paraview_reader.h"

namespace paraview_test {
namespace {

const std::map<std::string_view, int> kCellTypes = {{"tri", VTK_TRIANGLE}, {"quad", VTK_QUAD},
                                                    {"tet", VTK_TETRA},    {"pyramid", VTK_PYRAMID},
                                                    {"prism", VTK_WEDGE},  {"hex", VTK_HEXAHEDRON}};

class Samples : public testing::Test {
 protected:
  void compare_mesh(const host::Part& part, vtkUnstructuredGrid* grid) {
    ASSERT_EQ(grid->GetNumberOfPoints(), part.nodes);
    const host::Coordinates nodes = session_.coordinates(part.number);
    for (vtkIdType i = 0; i < part.nodes; ++i) {
      const double* point = grid->GetPoint(i);
      const auto n = static_cast<std::size_t>(i);
      std::array<float, 3> expected = {nodes.x()[n], nodes.y()[n], nodes.z()[n]};
      // The host's whole mesh is as it is stored, in the sector's case by radius and angle.
      if (is_cylindrical_ && part.kind == host::PartKind::whole) {
        const auto radius = static_cast<double>(expected[0]);
        const auto angle = static_cast<double>(expected[1]);
        expected = {static_cast<float>(radius * std::cos(angle)),
                    static_cast<float>(radius * std::sin(angle)), expected[2]};
      }
      ASSERT_TRUE(point[0] == expected[0] && point[1] == expected[1] && point[2] == expected[2]) << i;
    }
    order_.clear();
    for (const host::ElementBlock& block : session_.elements(part.number)) {
      // The host has the cells shape by shape, the reader in the file's order.
      const std::vector<vtkIdType> cells = cells_of_type(grid, kCellTypes.at(block.shape.name));
      ASSERT_EQ(cells.size(), block.size());
      order_.insert(order_.end(), cells.begin(), cells.end());
      for (std::size_t i = 0; i < block.size(); ++i) {
        const vtkIdType cell = cells[i];
        vtkIdType count = 0;
        const vtkIdType* corners = nullptr;
        grid->GetCellPoints(cell, count, corners);
        ASSERT_EQ(count, block.shape.nodes);
        // The triangles of a prism have the opposite orientation in VTK.
        const bool is_prism = block.shape.name == "prism";
        const std::array<std::size_t, 6> of_prism = {0, 2, 1, 3, 5, 4};
        for (std::size_t c = 0; c < static_cast<std::size_t>(count); ++c)
          ASSERT_EQ(corners[c] + 1, block.element(i)[is_prism ? of_prism[c] : c]) << "cell " << cell;
      }
    }
    EXPECT_EQ(static_cast<vtkIdType>(order_.size()), grid->GetNumberOfCells());
  }

  static std::vector<vtkIdType> cells_of_type(vtkUnstructuredGrid* grid, int type) {
    std::vector<vtkIdType> cells;
    for (vtkIdType cell = 0; cell < grid->GetNumberOfCells(); ++cell) {
      if (grid->GetCellType(cell) == type) cells.push_back(cell);
    }
    return cells;
  }

  void compare_values(const host::Variable& variable, const host::Part& part, vtkUnstructuredGrid* grid) {
    vtkFieldData* data = grid->GetPointData();
    if (variable.location == host::Location::element) data = grid->GetCellData();
    auto* array = vtkFloatArray::SafeDownCast(data->GetArray(variable.name.c_str()));
    for (int component = 0; component < variable.components(); ++component) {
      const host::PartValues given = session_.values(variable.number, part.number, component);
      ASSERT_NE(array, nullptr) << variable.name;
      if (given.availability != host::Availability::given) {
        for (vtkIdType i = 0; i < array->GetNumberOfTuples(); ++i)
          ASSERT_TRUE(std::isnan(array->GetTypedComponent(i, component))) << variable.name;
        continue;
      }
      ASSERT_EQ(array->GetNumberOfComponents(), variable.components());
      ASSERT_EQ(static_cast<std::size_t>(array->GetNumberOfTuples()), given.values().size());
      for (std::size_t i = 0; i < given.values().size(); ++i) {
        const bool is_per_cell = variable.location == host::Location::element;
        const float value =
            array->GetTypedComponent(is_per_cell ? order_.at(i) : static_cast<vtkIdType>(i), component);
        const float expected = given.values()[i];
        if (host::is_undefined(expected)) {
          ++undefined_;
          ASSERT_TRUE(std::isnan(value)) << variable.name << " at " << i;
        } else {
          ASSERT_EQ(value, expected) << variable.name << " at " << i;
        }
      }
    }
  }

  testkit::TemporaryDirectory directory_;
  host::Library library_{host::find_plugin(), host::Library::Globals::own};
  host::Session session_{library_, {.capture_diagnostics = true}};
  std::vector<vtkIdType> order_;  // the host's cells in the grid
  bool is_cylindrical_ = false;
  int undefined_ = 0;
};

TEST_F(Samples, AreWhatTheHostLibraryGives) {
  for (const samples::SampleInfo& sample : samples::write_samples(directory_.path())) {
    SCOPED_TRACE(sample.name);
    session_.open(sample.file);
    Reader reader(sample.file);
    ASSERT_TRUE(reader.open());
    const std::vector<float>& times = session_.variable_times().times;
    is_cylindrical_ = sample.name == "sector";
    ASSERT_EQ(reader.times().size(), times.size());
    for (std::size_t i = 0; i < times.size(); ++i)
      EXPECT_FLOAT_EQ(static_cast<float>(reader.times()[i]), times[i]);
    for (const std::string& name : reader.part_names()) reader->SetPartArrayStatus(name.c_str(), 1);

    for (int step = 0; step < session_.step_count(); ++step) {
      SCOPED_TRACE("step " + std::to_string(step));
      session_.select_step(step);
      ASSERT_TRUE(reader.update(times[static_cast<std::size_t>(step)]));
      const std::vector<std::string> names = reader.part_names();
      ASSERT_EQ(names.size(), session_.parts().size());
      EXPECT_EQ(reader.shown_parts(), names);
      for (const host::Part& part : session_.parts()) {
        SCOPED_TRACE(part.name);
        const std::string& name = names[static_cast<std::size_t>(part.number) - 1];
        EXPECT_TRUE(name.starts_with(part.name));
        vtkUnstructuredGrid* grid = reader.grid(name);
        ASSERT_NE(grid, nullptr);
        ASSERT_NO_FATAL_FAILURE(compare_mesh(part, grid));
        for (const host::Variable& variable : session_.variables())
          ASSERT_NO_FATAL_FAILURE(compare_values(variable, part, grid));
      }
    }
    EXPECT_TRUE(reader.take_errors().empty());
  }
  EXPECT_GT(undefined_, 0);
}

TEST_F(Samples, ShowTheWholeMeshAtFirst) {
  for (const samples::SampleInfo& sample : samples::write_samples(directory_.path())) {
    SCOPED_TRACE(sample.name);
    Reader reader(sample.file);
    ASSERT_TRUE(reader.open_as_it_is());
    int whole = 0;
    for (const std::string& name : reader.part_names()) {
      const bool is_whole = name.starts_with("ALL_ELEMENTS");
      whole += static_cast<int>(is_whole);
      EXPECT_EQ(reader->GetPartArrayStatus(name.c_str()) != 0, is_whole) << name;
    }
    EXPECT_EQ(whole, sample.name == "overset" ? 2 : 1);
    EXPECT_GT(reader->GetNumberOfPointArrays(), 0);
    EXPECT_EQ(reader->GetNumberOfCellArrays(), 1);
    EXPECT_STREQ(reader->GetCellArrayName(0), "MatOfElements");
  }
}

}  // namespace
}  // namespace paraview_test
