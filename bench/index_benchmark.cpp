// Bringing indices to zero-based numbering, against the loop that does it and no more.
#include <algorithm>
#include <benchmark/benchmark.h>
#include <vector>

#include "dataset/index_base.h"
#include "support/tracked_array.h"

namespace {

constexpr int kCorners = 8;

// Elements with nodes of their own, so that every index is another one.
void fill(fld::FLDGEO& geo, int elements) {
  auto list = fld::make_smart<fld::Elements>();
  list->nelem = elements;
  list->nconn = long{elements} * kCorners;
  list->type = fld::make_tracked_array<int>(static_cast<std::size_t>(elements), 1).release();
  list->conn = fld::make_tracked_array<int>(static_cast<std::size_t>(list->nconn), 1).release();
  std::fill_n(list->type, elements, 38);
  for (long i = 0; i < list->nconn; ++i) list->conn[i] = static_cast<int>(i) + 1;
  geo.elements = list;
}

void subtract_and_measure(benchmark::State& state) {
  const auto elements = static_cast<int>(state.range(0));
  fld::FLDGEO geo;
  fill(geo, elements);
  int bias = 1;
  while (state.KeepRunning()) {
    fld::modifyIndicies(geo, bias, {.elements = true});
    bias = -bias;  // there and back again
    benchmark::ClobberMemory();
  }
  state.SetItemsProcessed(state.iterations() * elements * kCorners);
}
BENCHMARK(subtract_and_measure)->Arg(1000)->Arg(1000000);

void subtract_in_a_loop(benchmark::State& state) {
  std::vector<int> corners(static_cast<std::size_t>(state.range(0)) * kCorners, 1);
  int bias = 1;
  while (state.KeepRunning()) {
    int lowest = 0;
    int highest = 0;
    for (int& corner : corners) {
      corner -= bias;
      lowest = std::min(lowest, corner);
      highest = std::max(highest, corner);
    }
    benchmark::DoNotOptimize(lowest);
    benchmark::DoNotOptimize(highest);
    bias = -bias;
    benchmark::ClobberMemory();
  }
  state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(corners.size()));
}
BENCHMARK(subtract_in_a_loop)->Arg(1000)->Arg(1000000);

}  // namespace
