// Opening a mesh of hexahedra, against reading and swapping the same bytes, and against what it keeps.
#include "bench/comparison.h"
#include "bench/host_arrays.h"
#include "bench/least.h"

namespace bench {

namespace {

constexpr double kOpeningMillions = 16.0;

std::vector<Comparison> prepare_opening(Datasets& datasets) {
  const Dataset& box = datasets.box(kOpeningMillions);
  const auto open = [file = box.file, plugin = datasets.plugin()](Trial& trial) {
    Host host(plugin);
    trial.begin();
    host.open(file);
    trial.end();
  };
  const auto read = [file = box.file, stretch = box.geometry()](Trial& trial) {
    const Words words = read_and_swap(file, stretch);
    trial.end();
  };
  const Work least = least_work({.file = box.file, .stretch = box.geometry(), .bytes = bytes_kept(box.box)});
  return {
      {.sides = {open, read, least},
       .rows = {{.name = "opening",
                 .what = "opening 16 M hexahedra / reading and swapping the same bytes",
                 .goal = goal_of_threads(1.10, 0.60)},
                {.name = "opening-memory",
                 .what = "peak memory of that opening less 16 MiB / bytes of the arrays kept",
                 .goal = 1.1,
                 .figure = Figure::kMemory,
                 .against_number = static_cast<double>(bytes_kept(box.box)),
                 .allowance = 16.0 * 1024 * 1024},
                {.name = "opening-least",
                 .what = "reading these bytes and touching the pages of the arrays kept, and no more / that",
                 .side = 2}}}};
}

}  // namespace

Family opening_rows() {
  return {.names = {"opening", "opening-memory", "opening-least"}, .prepare = prepare_opening};
}

}  // namespace bench
