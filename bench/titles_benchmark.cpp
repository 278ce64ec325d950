// The walks over the titles of a file with many sections.
#include <benchmark/benchmark.h>

#include "bench/linked_dataset.h"
#include "dataset/fld_file.h"

namespace {

constexpr int kSections = 500;

testkit::BoxOptions many_sections() {
  testkit::BoxOptions options = bench::cube(20);
  options.scalars = kSections;
  return options;
}

void check_sections(benchmark::State& state) {
  const bench::LinkedDataset dataset(many_sections());
  while (state.KeepRunning()) {
    fld::FLDFile file(dataset.file().string());
    benchmark::DoNotOptimize(file.checkSections());
  }
  state.SetItemsProcessed(state.iterations() * kSections);
}
BENCHMARK(check_sections);

void index_quantities(benchmark::State& state) {
  const bench::LinkedDataset dataset(many_sections());
  while (state.KeepRunning()) {
    fld::FLDFile file(dataset.file().string());
    if (file.checkSections() != 0 || file.seekFLD() != 0) state.SkipWithError("the file is not read");
  }
  state.SetItemsProcessed(state.iterations() * kSections);
}
BENCHMARK(index_quantities);

}  // namespace
