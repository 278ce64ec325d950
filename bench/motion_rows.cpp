// A step of a moving mesh, against reading its geometry and passing over the moved nodes.
#include <bit>
#include <cmath>
#include <numeric>

#include "bench/comparison.h"
#include "bench/host_arrays.h"
#include "bench/least.h"
#include "testkit/motion.h"

namespace bench {

namespace {

constexpr double kMotionMillions = 4.0;
constexpr int kGeometrySet = 1;
constexpr double kAngle = 0.125;

Work take_step(const std::filesystem::path& plugin, const std::filesystem::path& file) {
  return [=](Trial& trial) {
    Host host(plugin);
    host.open(file);
    const auto parts = host.parts();
    trial.begin();
    host.select_step(kGeometrySet, 1);
    trial.end();
  };
}

// The lower half of the rows turns round the z axis; its nodes are the first ones.
Work read_and_turn(const Dataset& still) {
  return [still](Trial& trial) {
    const auto& box = still.box;
    const std::int64_t rows = std::int64_t{box.ny} * box.nz / 2;
    const std::int64_t layers = rows / box.ny + 1;
    std::vector<int> moved(static_cast<std::size_t>(layers * (box.nx + 1) * (box.ny + 1)));
    std::iota(moved.begin(), moved.end(), 0);
    const std::uint64_t start = still.places.of("LS_Nodes").offset;
    constexpr std::uint64_t kRule = 20;
    const auto word_of = [&](std::size_t axis) {
      return (still.places.of("LS_Nodes").blocks[axis + 1] + kRule + 4 - start) / 4;
    };
    trial.begin();
    const Words before = read_and_swap(still.file, {0, start});
    const Words nodes = read_and_swap(still.file, {start, still.geometry().size - start});
    std::uint32_t* const x = nodes.get() + word_of(0);
    std::uint32_t* const y = nodes.get() + word_of(1);
    const double cosine = std::cos(kAngle);
    const double sine = std::sin(kAngle);
    for (const int node : moved) {
      const double from_x = std::bit_cast<float>(x[node]);
      const double from_y = std::bit_cast<float>(y[node]);
      x[node] = std::bit_cast<std::uint32_t>(static_cast<float>(cosine * from_x - sine * from_y));
      y[node] = std::bit_cast<std::uint32_t>(static_cast<float>(sine * from_x + cosine * from_y));
    }
    trial.end();
  };
}

std::vector<Comparison> prepare_motion(Datasets& datasets) {
  Dataset still{.file = datasets.path("turning_0.fld")};
  still.box = datasets.box_options(kMotionMillions);
  still.box.volumes = 2;
  still.places = testkit::write_box_dataset(still.file, still.box);
  testkit::File moving;
  moving.header.set_cycle(1, 1.0);
  moving.add_region_set().add(testkit::motion_section(
      {.base_cycle = 0,
       .regions = {{.names = {"volume_1"},
                    .actions = {testkit::Action::rotate({0.0, 0.0, 0.0}, {0.0, 0.0, 1.0}, kAngle)}}}}));
  testkit::write_file(moving, datasets.path("turning_1.fld"));
  const Work least =
      least_work({.file = still.file, .stretch = still.geometry(), .bytes = bytes_kept(still.box)});
  return {{.sides = {take_step(datasets.plugin(), still.file), read_and_turn(still), least},
           .rows = {
               {.name = "motion",
                .what = "a step that turns half of 4 M hexahedra / reading them and turning the nodes",
                .goal = goal_of_threads(0.90, 0.50)},
               {.name = "motion-least",
                .what = "reading that geometry and touching the pages of the arrays kept, and no more / that",
                .side = 2}}}};
}

}  // namespace

Family motion_rows() {
  return {.names = {"motion", "motion-least"}, .prepare = prepare_motion};
}

}  // namespace bench
