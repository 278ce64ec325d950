// What is done for a part: finding its nodes, its rows, copying its values.
#include <benchmark/benchmark.h>
#include <vector>

#include "bench/linked_dataset.h"
#include "interface/userd_api.h"
#include "reader/node_selection.h"
#include "reader/part_values.h"
#include "reader/parts.h"

namespace {

// Parts of a cube, and what a benchmark asks for first: six surfaces, two volumes, the whole mesh.
constexpr int kSurface = 1;  // x_low: its nodes lie far from each other
constexpr int kVolume = 7;
constexpr int kWhole = 9;

void select_part(benchmark::State& state) {
  const bench::LinkedDataset dataset(bench::cube(static_cast<int>(state.range(1))));
  const fld::Part part = fld::find_part(static_cast<int>(state.range(0)));
  int nodes = 0;
  while (state.KeepRunning()) {
    fld::forget_parts();
    nodes = fld::select_nodes(part).count;
    benchmark::ClobberMemory();
  }
  state.SetItemsProcessed(state.iterations() * nodes);
}
BENCHMARK(select_part)
    ->ArgNames({"part", "cells"})
    ->Args({kSurface, 20})
    ->Args({kSurface, 100})
    ->Args({kVolume, 20})
    ->Args({kVolume, 100})
    ->Args({kWhole, 100});

// The list of a part that was served before is remembered.
void select_part_again(benchmark::State& state) {
  const bench::LinkedDataset dataset(bench::cube(100));
  const fld::Part part = fld::find_part(static_cast<int>(state.range(0)));
  fld::select_nodes(part);
  int nodes = 0;
  while (state.KeepRunning()) {
    fld::forget_selection();
    nodes = fld::select_nodes(part).count;
    benchmark::ClobberMemory();
  }
  state.SetItemsProcessed(state.iterations() * nodes);
}
BENCHMARK(select_part_again)->Arg(kSurface)->Arg(kVolume);

void connectivity_rows(benchmark::State& state) {
  constexpr std::size_t kCorners = 8;
  const bench::LinkedDataset dataset(bench::cube(100));
  const bool whole = state.range(0) == kWhole;
  const std::size_t elements = whole ? 1000000 : 500000;
  std::vector<int> block(elements * kCorners);
  std::vector<int*> rows(elements);
  for (std::size_t i = 0; i < elements; ++i) rows[i] = &block[i * kCorners];
  while (state.KeepRunning()) {
    USERD_get_part_elements_by_type(static_cast<int>(state.range(0)), fld::kSlotHexahedron, rows.data());
    benchmark::ClobberMemory();
  }
  state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(block.size() * sizeof(int)));
}
BENCHMARK(connectivity_rows)->Arg(kVolume)->Arg(kWhole);

// Values in the precision of `Value`, to a part of a million nodes or to one of its sides.
template <class Value>
void copy_values(benchmark::State& state) {
  const bench::LinkedDataset dataset(bench::cube(100));
  const fld::PartNodes nodes = fld::select_nodes(fld::find_part(static_cast<int>(state.range(0))));
  const int all = fld::find_part(kWhole).geo().node_count();
  std::vector<Value> values(static_cast<std::size_t>(all), Value{1});
  std::vector<float> out(static_cast<std::size_t>(nodes.count) + 1);
  while (state.KeepRunning()) {
    fld::copy_part_values(nodes, {sizeof(Value), values.data()}, all, out.data());
    benchmark::ClobberMemory();
  }
  state.SetItemsProcessed(state.iterations() * nodes.count);
}
BENCHMARK(copy_values<float>)->Arg(kSurface)->Arg(kVolume)->Arg(kWhole);
BENCHMARK(copy_values<double>)->Arg(kSurface)->Arg(kVolume)->Arg(kWhole);

}  // namespace
