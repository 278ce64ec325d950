// Every part of every sample, at each step: points, cells and values are those of the host library, and no
// cell is inverted.
#include "samples/samples.h"

#include "gtest/gtest.h"
#include <string>

#include "testkit/temporary_directory.h"
#include "tests/host/open_file.h"
#include "tests/vtk/expected_part.h"
#include "vtk/part_grid.h"

namespace {

TEST(SamplesInVtk, AreWhatTheHostLibraryGives) {
  const testkit::TemporaryDirectory directory;
  for (const samples::SampleInfo& sample : samples::write_samples(directory.path())) {
    host_test::Reader reader;
    host::Session& session = reader.session();
    session.open(sample.file);
    for (const int step : {0, session.step_count() - 1}) {
      session.select_step(step);
      for (const host::Part& part : session.parts()) {
        // The whole mesh of a sector stays in its file's radius, angle and height.
        if (sample.name == "sector" && part.kind == host::PartKind::whole) continue;
        SCOPED_TRACE(sample.name + " " + part.name + " at step " + std::to_string(step));
        const auto grid = vtkdata::make_part_grid(session, part.number);
        for (const host::Variable& variable : session.variables())
          vtkdata::add_values(grid, session, variable.number, part.number, variable.name);
        vtk_test::expect_part(grid, session, part);
      }
    }
  }
}

}  // namespace
