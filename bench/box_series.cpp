// Writes a series over a box of hexahedra: the mesh is in the first file, the others have the quantities of
// their step alone.
#include <CLI/CLI.hpp>
#include <cmath>
#include <filesystem>
#include <fmt/core.h>

#include "bench/program.h"
#include "testkit/box_values.h"

namespace {

int run(int argc, char** argv) {
  CLI::App app(
      "Writes box_0.fld, box_1.fld, ...: a mesh of hexahedra that stays, with other values in every step");
  std::filesystem::path folder;
  double millions = 10.0;
  int steps = 2;
  int volumes = 1;
  app.add_option("folder", folder, "where the files go")->required();
  app.add_option("--millions", millions, "elements of the mesh, in millions")->capture_default_str();
  app.add_option("--steps", steps, "files")->capture_default_str()->check(CLI::Range(1, 1000));
  app.add_option("--volumes", volumes, "volume regions")->capture_default_str()->check(CLI::PositiveNumber);
  CLI11_PARSE(app, argc, argv);

  std::filesystem::create_directories(folder);
  testkit::BoxOptions options;
  options.nx = options.ny = options.nz = static_cast<int>(std::lround(std::cbrt(millions * 1e6)));
  options.volumes = volumes;
  for (int step = 0; step < steps; ++step) {
    options.cycle = step;
    options.time = 0.1 * step;
    options.lengths.fill(1.0 + 0.1 * step);  // the values are those of a box that grows
    testkit::write_file(step == 0 ? testkit::box_file(options) : testkit::box_values_file(options),
                        folder / fmt::format("box_{}.fld", step));
  }
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  return bench::run_program("box_series", run, argc, argv);
}
