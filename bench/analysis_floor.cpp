// What `fldtool integrate` and `fldtool probe` cannot do without: reading what they need with the host
// library, and building VTK's locator. bench/analysis_benchmark.py compares them.
#include <CLI/CLI.hpp>
#include <filesystem>
#include <vtkNew.h>
#include <vtkStaticCellLocator.h>

#include "bench/program.h"
#include "host/plugin_path.h"
#include "host/session.h"
#include "vtk/part_grid.h"

namespace {

// The mesh and the values of a part, which are let go again.
void read_part(host::Session& session, const host::Part& part, bool with_mesh) {
  if (with_mesh) {
    const host::Coordinates coordinates = session.coordinates(part.number);
    const std::vector<host::ElementBlock> elements = session.elements(part.number);
    static_cast<void>(coordinates);
    static_cast<void>(elements);
  }
  for (const host::Variable& variable : session.variables()) {
    for (int component = 0; component < variable.components(); ++component)
      static_cast<void>(session.values(variable.number, part.number, component));
  }
}

int run(int argc, char** argv) {
  CLI::App app("Reads the whole mesh, builds a locator of its elements, and reads values");
  std::filesystem::path file;
  bool surfaces = false;
  app.add_option("file", file, "a dataset")->required();
  app.add_flag("--surfaces", surfaces,
               "read the meshes and values of the surfaces, not the values of the whole mesh");
  CLI11_PARSE(app, argc, argv);

  const host::Library library(host::find_plugin());
  host::SessionOptions options;
  options.capture_diagnostics = true;
  host::Session session(library, options);
  session.open(file);
  for (const host::Part& part : session.parts()) {
    if (part.kind == host::PartKind::whole) {
      const vtkSmartPointer<vtkUnstructuredGrid> grid = vtkdata::make_part_grid(session, part.number);
      vtkNew<vtkStaticCellLocator> locator;
      locator->SetDataSet(grid);
      locator->BuildLocator();
      if (!surfaces) read_part(session, part, false);
    } else if (part.kind == host::PartKind::surface && surfaces) {
      read_part(session, part, true);
    }
  }
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  return bench::run_program("analysis_floor", run, argc, argv);
}
