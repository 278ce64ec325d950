// Opening a series of small files, against reading what has to be looked at in each.
#include <algorithm>
#include <array>
#include <stdexcept>
#include <string>
#include <sys/inotify.h>
#include <unistd.h>

#include "bench/comparison.h"
#include "bench/host_arrays.h"

namespace bench {

namespace {

constexpr std::uint64_t kRule = 20;  // a rule record

// What has to be looked at: the header, every title with what stands beside it, every rule record. Stretches
// that touch are one.
std::vector<Stretch> stretches_of(const testkit::Places& places) {
  std::vector<Stretch> stretches;
  const auto add = [&stretches](std::uint64_t begin, std::uint64_t end) {
    if (!stretches.empty() && begin <= stretches.back().offset + stretches.back().size) {
      Stretch& last = stretches.back();
      last.size = std::max(last.offset + last.size, end) - last.offset;
    } else {
      stretches.push_back({begin, end - begin});
    }
  };
  for (const testkit::Place& place : places.all) {
    if (place.region_set < 0 || place.blocks.empty()) {
      add(stretches.empty() ? 0 : place.offset, place.end);
      continue;
    }
    add(place.offset, place.blocks.front() + kRule);
    for (const std::uint64_t block : place.blocks) add(block, block + kRule);
    add(place.end - kRule, place.end);
  }
  return stretches;
}

std::string file_name(std::int64_t number) {
  return "series_" + std::to_string(number) + ".fld";
}

Work open_series(const std::filesystem::path& plugin, const std::filesystem::path& first, bool simplify) {
  return [=](Trial& trial) {
    Host host(plugin);
    if (simplify) host.simplify_series();
    trial.begin();
    host.open(first);
    trial.end();
  };
}

Work read_series(const std::filesystem::path& folder, std::int64_t files,
                 const std::vector<Stretch>& stretches) {
  return [=](Trial& trial) {
    trial.begin();
    for (std::int64_t i = 0; i < files; ++i) read_stretches(folder / file_name(i), stretches);
    trial.end();
  };
}

// The openings of files of a folder in an event queue.
int count_openings(int queue) {
  alignas(inotify_event) std::array<char, 65536> buffer;
  int openings = 0;
  for (ssize_t size = 0; (size = read(queue, buffer.data(), buffer.size())) > 0;) {
    for (std::size_t at = 0; at < static_cast<std::size_t>(size);) {
      const auto* const event = reinterpret_cast<const inotify_event*>(buffer.data() + at);
      if ((event->mask & IN_Q_OVERFLOW) != 0) throw std::runtime_error("too many openings to count");
      if ((event->mask & IN_OPEN) != 0 && (event->mask & IN_ISDIR) == 0) ++openings;
      at += sizeof *event + event->len;
    }
  }
  return openings;
}

// Counts the openings per file behind the first one, which is opened for its geometry as well.
Work openings_per_file(const std::filesystem::path& plugin, const std::filesystem::path& first,
                       std::int64_t files) {
  return [=](Trial& trial) {
    Host host(plugin);
    host.simplify_series();
    const int queue = inotify_init1(IN_NONBLOCK | IN_CLOEXEC);
    if (queue < 0) throw std::runtime_error("no queue of events");
    for (std::int64_t i = 1; i < files; ++i) {
      const auto file = first.parent_path() / file_name(i);
      // Closings too: two equal events in a row would arrive as one.
      if (inotify_add_watch(queue, file.c_str(), IN_OPEN | IN_CLOSE) < 0) {
        throw std::runtime_error("cannot watch " + file.string());
      }
    }
    host.open(first);
    trial.set_count(static_cast<double>(count_openings(queue)) / static_cast<double>(files - 1));
    close(queue);
  };
}

std::vector<Comparison> prepare_series(Datasets& datasets) {
  const auto files = std::min<std::int64_t>(datasets.scaled(1000, 4), 1000);
  const auto folder = datasets.path("series");
  std::filesystem::create_directories(folder);
  testkit::BoxOptions options;
  options.nx = options.ny = options.nz = 10;
  options.scalars = 4;
  testkit::Places places;
  for (std::int64_t i = 0; i < files; ++i) {
    options.cycle = static_cast<std::int32_t>(i);
    options.time = static_cast<double>(i);
    places = testkit::write_box_dataset(folder / file_name(i), options);
  }
  const auto first = folder / file_name(0);
  const auto plugin = datasets.plugin();
  return {
      {.sides = {open_series(plugin, first, false), read_series(folder, files, stretches_of(places)),
                 open_series(plugin, first, true)},
       .rows = {{.name = "series",
                 .what = "opening a series of 1,000 files / opening each and reading its titles and rules",
                 .goal = 1.5},
                {.name = "series-simplified",
                 .what = "the same with the simplifying option / the same program",
                 .goal = 1.5,
                 .side = 2}}},
      {.sides = {openings_per_file(plugin, first, files)},
       .rows = {{.name = "series-openings",
                 .what = "openings of each file behind the first, with the simplifying option / one",
                 .goal = 1.0,
                 .figure = Figure::kCount,
                 .against_number = 1.0}}}};
}

}  // namespace

Family series_rows() {
  return {.names = {"series", "series-simplified", "series-openings"}, .prepare = prepare_series};
}

}  // namespace bench
