// A mesh of tetrahedra and prisms.
#include <cmath>

#include "bench/comparison.h"
#include "bench/host_arrays.h"
#include "bench/least.h"
#include "bench/part_sides.h"
#include "testkit/grid_mesh.h"

namespace bench {

namespace {

// Prisms below and tetrahedra above, about a million before scaling: four elements per cell on average.
testkit::Mesh tetrahedra_and_prisms(std::int64_t elements) {
  const int cells = static_cast<int>(std::max(2L, std::lround(std::cbrt(static_cast<double>(elements) / 4))));
  testkit::Grid grid;
  grid.cells = {cells, cells, cells};
  grid.point = [](const testkit::CellIndex& p) {
    return testkit::Vec3{static_cast<double>(p[0]), static_cast<double>(p[1]), static_cast<double>(p[2])};
  };
  grid.kind = [cells](const testkit::CellIndex& cell) {
    return cell[2] < cells / 2 ? testkit::CellKind::kPrisms : testkit::CellKind::kTetrahedra;
  };
  testkit::Mesh mesh;
  append(mesh, mesh_grid(grid), "volume_1", 1, [](const testkit::GridFace&) { return "outside"; });
  return mesh;
}

std::vector<Comparison> prepare_mixed(Datasets& datasets) {
  const auto file = datasets.path("mixed.fld");
  // The mesh is made in memory, which a child gives back. All of the file is geometry.
  const Measurement written = measure_in_child([&](Trial& trial) {
    const testkit::Mesh mesh = tetrahedra_and_prisms(datasets.scaled(16e6 / 16));
    trial.set_count(static_cast<double>(mesh.elements.size()));
    testkit::File description;
    description.add_region_set().add(testkit::mesh_sections(mesh));
    write_file(description, file);
  });
  const Stretch all{0, std::filesystem::file_size(file)};
  const auto plugin = datasets.plugin();
  const Work open = [=](Trial& trial) {
    Host host(plugin);
    trial.begin();
    host.open(file);
    trial.end();
  };
  const Work read = [=](Trial& trial) {
    const Words words = read_and_swap(file, all);
    trial.end();
  };
  // What the file holds, and for every element where its nodes begin.
  const std::size_t kept = all.size + static_cast<std::size_t>(written.count) * sizeof(std::int64_t);
  const Work least = least_work({.file = file, .stretch = all, .bytes = kept});
  const Work touch = [=](Trial& trial) {
    Host host(plugin);
    host.open(file);
    const PartInfo part = whole_mesh(host);
    trial.begin();
    do_least({.bytes = coordinate_bytes(part.nodes) + element_bytes(part)});
    trial.end();
  };
  return {
      {.sides = {open, read, least},
       .rows = {{.name = "mixed-opening",
                 .what = "opening 1 M tetrahedra and prisms / reading and swapping the same bytes",
                 .goal = goal_of_threads(1.05, 0.65)},
                {.name = "mixed-opening-least",
                 .what = "reading these bytes and touching the pages of the arrays kept, and no more / that",
                 .side = 2}}},
      {.sides = {take_mesh(plugin, file), write_mesh(plugin, file), touch},
       .rows = {{.name = "mixed-elements",
                 .what = "coordinates and connectivity of that mesh / a loop that writes the arrays",
                 .goal = goal_of_threads(1.05, 0.60)},
                {.name = "mixed-elements-least",
                 .what = "touching the pages of these arrays, and no more / that",
                 .side = 2}}}};
}

}  // namespace

Family mixed_rows() {
  return {.names = {"mixed-opening", "mixed-opening-least", "mixed-elements", "mixed-elements-least"},
          .prepare = prepare_mixed};
}

}  // namespace bench
