// Values on all parts of a step, and the geometry of the whole mesh.
#include <algorithm>
#include <bit>

#include "bench/comparison.h"
#include "bench/host_arrays.h"
#include "bench/least.h"
#include "bench/part_sides.h"

namespace bench {

namespace {

constexpr double kPartMillions = 16.0;
constexpr int kVariablesSet = 2;

// The nodes of a box's sides, ascending, in the order of the surfaces x_low, x_high, y_low, ...
std::vector<std::vector<int>> nodes_of_sides(const testkit::BoxOptions& box) {
  std::vector<std::vector<int>> sides(6);
  int node = 0;
  for (int k = 0; k <= box.nz; ++k) {
    for (int j = 0; j <= box.ny; ++j) {
      for (int i = 0; i <= box.nx; ++i, ++node) {
        if (i == 0) sides[0].push_back(node);
        if (i == box.nx) sides[1].push_back(node);
        if (j == 0) sides[2].push_back(node);
        if (j == box.ny) sides[3].push_back(node);
        if (k == 0) sides[4].push_back(node);
        if (k == box.nz) sides[5].push_back(node);
      }
    }
  }
  return sides;
}

// The host has taken what the parts are made of, as it does before it asks for values.
Work take_scalar(const Dataset& box, const std::filesystem::path& plugin) {
  return [file = box.file, plugin](Trial& trial) {
    Host host(plugin);
    host.open(file);
    const auto parts = host.parts();
    for (const PartInfo& part : parts) {
      const HostCoordinates axes = host.coordinates(part);
      const auto rows = host.elements(part);
    }
    std::vector<HostValues> values;
    values.reserve(parts.size());
    trial.begin();
    host.select_step(kVariablesSet, 0);
    for (const PartInfo& part : parts) values.push_back(host.scalar(part));
    trial.end();
  };
}

// Reads the values, and copies them out: those of the sides node by node, those of the one volume and of the
// whole mesh as they stand.
Work read_scalar(const Dataset& box) {
  return [box](Trial& trial) {
    const auto sides = nodes_of_sides(box.box);
    const auto nodes = static_cast<std::size_t>(testkit::box_counts(box.box).nodes);
    std::vector<HostValues> values;
    trial.begin();
    const Words words = read_and_swap(box.file, box.scalar_values());
    for (const auto& side : sides) {
      auto out = std::make_unique_for_overwrite<float[]>(side.size() + 1);
      for (std::size_t i = 0; i < side.size(); ++i) {
        out[i + 1] = std::bit_cast<float>(words[static_cast<std::size_t>(side[i])]);
      }
      values.push_back(std::move(out));
    }
    for (int whole = 0; whole < 2; ++whole) {
      auto out = std::make_unique_for_overwrite<float[]>(nodes + 1);
      for (std::size_t i = 0; i < nodes; ++i) out[i + 1] = std::bit_cast<float>(words[i]);
      values.push_back(std::move(out));
    }
    trial.end();
  };
}

// Bytes of the values that the reader keeps, and of those in the host's arrays.
std::size_t value_bytes(const testkit::BoxOptions& box) {
  auto values = 3 * static_cast<std::size_t>(testkit::box_counts(box).nodes);
  for (const auto& side : nodes_of_sides(box)) values += side.size();
  return values * sizeof(float);
}

std::vector<Comparison> prepare_part(Datasets& datasets) {
  const Dataset& box = datasets.box(kPartMillions);
  const Work least =
      least_work({.file = box.file, .stretch = box.scalar_values(), .bytes = value_bytes(box.box)});
  return {{.sides = {take_scalar(box, datasets.plugin()), read_scalar(box), least},
           .rows = {{.name = "scalar",
                     .what = "a scalar on all parts for one step / reading it and copying it out",
                     .goal = goal_of_threads(1.00, 0.60)},
                    {.name = "scalar-least",
                     .what = "reading it and touching the pages of all arrays, and no more / that",
                     .side = 2}}},
          {.sides = {take_mesh(datasets.plugin(), box.file), write_mesh(datasets.plugin(), box.file)},
           .rows = {{.name = "all-elements",
                     .what = "coordinates and connectivity of ALL_ELEMENTS / a loop that writes the arrays",
                     .goal = goal_of_threads(1.05, 0.60)}}}};
}

}  // namespace

Family part_rows() {
  return {.names = {"scalar", "scalar-least", "all-elements"}, .prepare = prepare_part};
}

}  // namespace bench
