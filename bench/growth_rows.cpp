// Time against size: the same session over 16 times the elements.
#include "bench/comparison.h"
#include "bench/host_arrays.h"

namespace bench {

namespace {

std::vector<Comparison> prepare_growth(Datasets& datasets) {
  const auto session = [&](double millions) -> Work {
    return [file = datasets.box(millions).file, plugin = datasets.plugin()](Trial& trial) {
      run_session(plugin, file, trial);
    };
  };
  const auto elements = [&](double millions) {
    return static_cast<double>(testkit::box_counts(datasets.box(millions).box).elements);
  };
  // The boxes are cubes of whole cells, so one is not exactly 16 times the other.
  const double times = elements(16.0) / elements(1.0);
  return {{.sides = {session(16.0), session(1.0)},
           .rows = {{.name = "growth",
                     .what = "session over 16 M hexahedra / over 1 M hexahedra",
                     .goal = 16.5,
                     .side_units = times / 16.0}}}};
}

}  // namespace

Family growth_rows() {
  return {.names = {"growth"}, .prepare = prepare_growth};
}

}  // namespace bench
