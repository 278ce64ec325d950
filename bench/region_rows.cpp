// The cost of a region when there are many: 1,000 and 100,000 volume regions of ten elements each.
#include <algorithm>
#include <cmath>

#include "bench/comparison.h"
#include "bench/host_arrays.h"

namespace bench {

namespace {

constexpr int kElementsPerRegion = 10;

std::filesystem::path write_regions(Datasets& datasets, std::int64_t regions) {
  auto path = datasets.path("regions" + std::to_string(regions) + ".fld");
  testkit::BoxOptions options = datasets.box_options(1.0);
  options.nx = kElementsPerRegion;
  options.ny = static_cast<int>(std::ceil(std::sqrt(static_cast<double>(regions))));
  options.nz = static_cast<int>((regions + options.ny - 1) / options.ny);
  options.volumes = static_cast<std::int32_t>(regions);
  testkit::write_box_dataset(path, options);
  return path;
}

// Opens the file and takes everything of every region, one after the other; the host's arrays are released
// again.
Work take_regions(const std::filesystem::path& plugin, const std::filesystem::path& file) {
  return [=](Trial& trial) {
    Host host(plugin);
    trial.begin();
    host.open(file);
    for (const PartInfo& part : host.parts()) {
      if (part.name.starts_with("volume_")) host.take_all(part);
    }
    trial.end();
  };
}

std::vector<Comparison> prepare_region(Datasets& datasets) {
  const std::int64_t many = std::max<std::int64_t>(datasets.scaled(100000), 200);
  const std::int64_t few = many / 100;
  const auto row = [&](const char* name, const char* what, Figure figure) {
    return Row{.name = name,
               .what = what,
               .goal = 1.1,  // as much per region, give or take what measuring does
               .figure = figure,
               .side_units = static_cast<double>(many),
               .against_units = static_cast<double>(few)};
  };
  return {{.sides = {take_regions(datasets.plugin(), write_regions(datasets, many)),
                     take_regions(datasets.plugin(), write_regions(datasets, few))},
           .rows = {row("regions", "session over 100,000 regions, per region / over 1,000, per region",
                        Figure::kSeconds),
                    row("regions-memory", "peak memory of these sessions, host's arrays in, per region",
                        Figure::kMemory)}}};
}

}  // namespace

Family region_rows() {
  return {.names = {"regions", "regions-memory"}, .prepare = prepare_region};
}

}  // namespace bench
