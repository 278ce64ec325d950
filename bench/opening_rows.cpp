// Opening a mesh of hexahedra, against reading and swapping the same bytes, and against what it keeps.
#include "bench/comparison.h"
#include "bench/host_arrays.h"

namespace bench {

namespace {

constexpr double kOpeningMillions = 16.0;

// Bytes of the arrays that are kept of a box: what its sections hold, and for every element where its nodes
// begin.
double bytes_kept(const testkit::BoxOptions& box) {
  const auto counts = testkit::box_counts(box);
  const double faces = 2.0 * (static_cast<double>(box.nx) * box.ny + static_cast<double>(box.ny) * box.nz +
                              static_cast<double>(box.nx) * box.nz);
  constexpr double kPerElement = 3 * sizeof(std::int32_t) + sizeof(std::int64_t);  // type, material, volume
  constexpr double kPerFace = (1 + 1 + 4) * sizeof(std::int32_t);                  // type, link, corners
  return static_cast<double>(counts.elements) * kPerElement +
         static_cast<double>(counts.conn) * sizeof(std::int32_t) + faces * kPerFace +
         static_cast<double>(counts.nodes) * 3 * sizeof(float);
}

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
  const auto threads = static_cast<unsigned>(threads_of_reader());
  const auto touch = [bytes = static_cast<std::size_t>(bytes_kept(box.box)), threads](Trial& trial) {
    touch_pages(bytes, threads);
    trial.end();
  };
  const auto fetch = [file = box.file, stretch = box.geometry(), threads](Trial& trial) {
    read_only(file, stretch, threads);
    trial.end();
  };
  return {{.sides = {open, read, touch, fetch},
           .rows = {{.name = "opening",
                     .what = "opening 16 M hexahedra / reading and swapping the same bytes",
                     .goal = goal_of_threads(1.10, 0.60)},
                    {.name = "opening-memory",
                     .what = "peak memory of that opening less 16 MiB / bytes of the arrays kept",
                     .goal = 1.1,
                     .figure = Figure::kMemory,
                     .against_number = bytes_kept(box.box),
                     .allowance = 16.0 * 1024 * 1024},
                    {.name = "opening-touching",
                     .what = "that opening / touching the pages of the arrays kept, on as many threads",
                     .against = 2},
                    {.name = "opening-fetching",
                     .what = "that opening / reading the same bytes and no more, on as many threads",
                     .against = 3}}}};
}

}  // namespace

Family opening_rows() {
  return {.names = {"opening", "opening-memory", "opening-touching", "opening-fetching"},
          .prepare = prepare_opening};
}

}  // namespace bench
