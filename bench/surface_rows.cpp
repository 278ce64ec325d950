// The same faces as a thousand surfaces and as one: the cost of a part follows the part, not the mesh.
#include <algorithm>

#include "bench/comparison.h"
#include "bench/host_arrays.h"

namespace bench {

namespace {

constexpr double kSurfaceMillions = 10.0;
constexpr int kQuadrilateralCorners = 4;

// All faces of a box's surfaces as lists.
testkit::Surface all_faces(testkit::RegionSet& set) {
  const testkit::Section& section = set.section("LS_SurfaceGeometry");
  const auto append = [](std::vector<std::int32_t>& list, const testkit::Block& block) {
    const auto& source = std::get<testkit::Ints>(block.data);
    const std::size_t before = list.size();
    list.resize(before + static_cast<std::size_t>(source.size()));
    source.read(0, std::span(list).subspan(before));
  };
  testkit::Surface all{.name = "outside"};
  constexpr std::size_t kBlocksPerSurface = 6;
  for (std::size_t first = 2; first < section.blocks.size(); first += kBlocksPerSurface) {
    append(all.type.values(), section.blocks[first + 2]);
    append(all.link.values(), section.blocks[first + 3]);
    append(all.node.values(), section.blocks[first + 5]);
  }
  return all;
}

std::vector<testkit::Surface> cut(const testkit::Surface& all, std::int64_t count) {
  std::vector<testkit::Surface> surfaces;
  const auto stretch = [](const testkit::Ints& list, std::int64_t begin, std::int64_t end) {
    return testkit::Ints(std::vector(list.values().begin() + begin, list.values().begin() + end));
  };
  for (std::int64_t s = 0; s < count; ++s) {
    const std::int64_t begin = all.size() * s / count;
    const std::int64_t end = all.size() * (s + 1) / count;
    surfaces.push_back(
        {.name = "surface_" + std::to_string(s + 1),
         .type = stretch(all.type, begin, end),
         .link = stretch(all.link, begin, end),
         .node = stretch(all.node, begin * kQuadrilateralCorners, end * kQuadrilateralCorners)});
  }
  return surfaces;
}

// Everything of the surfaces, from the build information on, into arrays of their own.
Work take_surfaces(const std::filesystem::path& plugin, const std::filesystem::path& file,
                   std::int64_t surfaces) {
  return [=](Trial& trial) {
    Host host(plugin);
    host.open(file);
    std::vector<TakenPart> taken;
    trial.begin();
    const auto parts = host.parts();
    for (auto part = parts.begin(); part != parts.begin() + surfaces; ++part) {
      taken.push_back(host.take_all(*part));
    }
    trial.end();
  };
}

std::vector<Comparison> prepare_surface(Datasets& datasets) {
  const auto many = std::min<std::int64_t>(datasets.scaled(1000, 10), 1000);
  const auto path_of = [&](std::int64_t count) {
    return datasets.path("surfaces" + std::to_string(count) + ".fld");
  };
  for (const std::int64_t count : {many, std::int64_t{1}}) {
    measure_in_child([&](Trial&) {
      testkit::File file = testkit::box_file(datasets.box_options(kSurfaceMillions));
      testkit::RegionSet& set = file.region_sets[0];
      set.section("LS_SurfaceGeometry") = testkit::surfaces_section(cut(all_faces(set), count));
      write_file(file, path_of(count));
    });
  }
  return {{.sides = {take_surfaces(datasets.plugin(), path_of(many), many),
                     take_surfaces(datasets.plugin(), path_of(1), 1)},
           .rows = {{.name = "surfaces",
                     .what = "all of 1,000 surfaces over 10 M elements / of one surface with the same faces",
                     .goal = 2.0}}}};
}

}  // namespace

Family surface_rows() {
  return {.names = {"surfaces"}, .prepare = prepare_surface};
}

}  // namespace bench
