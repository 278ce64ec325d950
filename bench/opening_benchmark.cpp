// Opens a mesh of hexahedra through the plug-in, in turn with the floor, and prints seconds, peak memory and
// their ratio.
#include <CLI/CLI.hpp>
#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdio>
#include <exception>
#include <fcntl.h>
#include <fmt/core.h>
#include <optional>
#include <string>
#include <unistd.h>
#include <vector>

#include "bench/child_process.h"
#include "bench/floor.h"
#include "host/library.h"
#include "host/plugin_path.h"
#include "testkit/box_dataset.h"
#include "testkit/temporary_directory.h"

namespace {

// The reader's trace of what it opens is of no interest here.
void silence_standard_error() {
  const int nowhere = open("/dev/null", O_WRONLY | O_CLOEXEC);
  if (nowhere >= 0) dup2(nowhere, STDERR_FILENO);
}

void open_through_plugin(const std::filesystem::path& plugin, const std::string& file) {
  silence_standard_error();
  const host::Library library(plugin);
  std::string path = file;
  std::string none;
  if (library.entry_points().set_filenames(path.data(), none.data(), none.data(), 0) != 1) {
    throw std::runtime_error("the reader did not open the dataset");
  }
}

// The measurements of one program, and the median of one of their figures.
struct Series {
  double median(double bench::Measurement::*figure) const {
    std::vector<double> values;
    for (const auto& run : runs) values.push_back(run.*figure);
    std::nth_element(values.begin(), values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2),
                     values.end());
    return values[values.size() / 2];
  }

  void print(const char* what) const {
    using bench::Measurement;
    fmt::print("{:<30}{:>10.3f}{:>16.3f}{:>12.1f}\n", what, median(&Measurement::seconds),
               median(&Measurement::cpu_seconds), median(&Measurement::peak_mebibytes));
  }

  std::vector<bench::Measurement> runs;
};

int run(int argc, char** argv) {
  CLI::App app("Time and memory of opening a mesh of hexahedra, beside reading and swapping the same bytes");
  double millions = 10.0;
  int runs = 5;
  std::optional<std::filesystem::path> plugin;
  app.add_option("--millions", millions, "elements of the mesh, in millions")->capture_default_str();
  app.add_option("--runs", runs, "runs of each, in turn")->capture_default_str()->check(CLI::Range(1, 100));
  app.add_option("--plugin", plugin, "the reader library");
  CLI11_PARSE(app, argc, argv);

  testkit::BoxOptions options;
  options.nx = options.ny = options.nz = static_cast<int>(std::lround(std::cbrt(millions * 1e6)));
  options.scalars = options.vectors = 0;  // the file holds the geometry alone, and all of it is read
  const testkit::TemporaryDirectory directory;
  const auto file = directory.path() / "box.fld";
  testkit::write_box_dataset(file, options);
  const auto library = host::find_plugin(plugin);

  Series reader;
  Series floor;
  Series ratio;
  for (int run = -1; run < runs; ++run) {  // run -1 warms the page cache
    const auto a = bench::measure_in_child([&] { open_through_plugin(library, file.string()); });
    const auto b = bench::measure_in_child([&] { bench::read_and_swap(file); });
    if (run < 0) continue;
    reader.runs.push_back(a);
    floor.runs.push_back(b);
    ratio.runs.push_back(
        {a.seconds / b.seconds, a.cpu_seconds / b.cpu_seconds, a.peak_mebibytes / b.peak_mebibytes});
  }

  const auto counts = testkit::box_counts(options);
  fmt::print("{} hexahedra, {} nodes, file of {:.1f} MiB, medians of {} runs in turn\n", counts.elements,
             counts.nodes, static_cast<double>(std::filesystem::file_size(file)) / 1048576.0, runs);
  fmt::print("{:<30}{:>10}{:>16}{:>12}\n", "", "seconds", "processor s", "peak MiB");
  reader.print("opening through the plug-in");
  floor.print("reading and swapping");
  ratio.print("ratio, run by run");
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  try {
    return run(argc, argv);
  } catch (const std::exception& error) {
    fmt::print(stderr, "opening_benchmark: {}\n", error.what());
    return 1;
  }
}
