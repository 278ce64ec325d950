// Compares the reader, in the hands of a host, with floors and with the readers of other formats, and prints
// a table of ratios.
#include <CLI/CLI.hpp>
#include <algorithm>
#include <filesystem>
#include <fmt/core.h>
#include <optional>
#include <string>
#include <vector>

#include "bench/comparison.h"
#include "bench/program.h"
#include "bench/table.h"
#include "host/plugin_path.h"
#include "testkit/temporary_directory.h"

namespace {

struct Options {
  std::vector<std::string> rows{};
  double millions = bench::kLargestMillions;
  int runs = 5;
  std::optional<std::filesystem::path> plugin{};
  std::filesystem::path directory = std::filesystem::temp_directory_path();
  bool markdown = false;
  bool processor = false;

  bool wants(const std::string& row) const {
    return rows.empty() || std::find(rows.begin(), rows.end(), row) != rows.end();
  }
};

std::vector<bench::Family> all_families() {
  return {bench::opening_rows(), bench::part_rows(),   bench::mixed_rows(),
          bench::growth_rows(),  bench::peer_rows(),   bench::surface_rows(),
          bench::series_rows(),  bench::region_rows(), bench::motion_rows()};
}

void run(const Options& options, const std::vector<bench::Family>& families) {
  const testkit::TemporaryDirectory directory(options.directory);
  bench::Datasets datasets(host::find_plugin(options.plugin), directory.path(), options.millions);
  const auto form = options.markdown ? bench::TableForm::kMarkdown : bench::TableForm::kPlain;
  const auto clock = options.processor ? bench::Clock::kProcessor : bench::Clock::kElapsed;
  if (options.millions != bench::kLargestMillions) {
    fmt::print("All sizes are {:.3g} times those that are named.\n\n",
               options.millions / bench::kLargestMillions);
  }
  bench::print_heading(form);
  for (const bench::Family& family : families) {
    const auto wants = [&](const std::string& row) { return options.wants(row); };
    if (std::none_of(family.names.begin(), family.names.end(), wants)) continue;
    for (bench::Comparison& comparison : family.prepare(datasets)) {
      std::erase_if(comparison.rows, [&](const bench::Row& row) { return !options.wants(row.name); });
      if (comparison.rows.empty()) continue;
      for (const bench::Result& result : measure(comparison, options.runs, clock)) print_row(result, form);
    }
    datasets.remove_family();
  }
}

int parse_and_run(int argc, char** argv) {
  CLI::App app(
      "Times and memory of the reader as ratios against floors and peers, measured in turn; medians of the "
      "runs' ratios");
  Options options;
  const auto families = all_families();
  std::vector<std::string> names;
  for (const auto& family : families) names.insert(names.end(), family.names.begin(), family.names.end());
  app.add_option("rows", options.rows, "only these rows")->check(CLI::IsMember(names));
  app.add_option("--millions", options.millions,
                 "elements of the largest mesh, in millions; all else follows")
      ->capture_default_str()
      ->check(CLI::Range(0.0001, 100.0));
  app.add_option("--runs", options.runs, "runs of each side")
      ->capture_default_str()
      ->check(CLI::Range(1, 100));
  app.add_option("--plugin", options.plugin, "the reader library");
  app.add_option("--directory", options.directory, "where the datasets go while they are needed")
      ->capture_default_str()
      ->check(CLI::ExistingDirectory);
  app.add_flag("--markdown", options.markdown, "print the table as docs/benchmarks.md has it");
  app.add_flag(
      "--processor-time", options.processor,
      "compare the processor's time in place of the elapsed one: for machines with other work to do");
  CLI11_PARSE(app, argc, argv);
  run(options, families);
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  return bench::run_program("comparison", parse_and_run, argc, argv);
}
