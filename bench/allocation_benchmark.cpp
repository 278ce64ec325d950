// The tracked allocator with many blocks alive, against malloc and free.
#include <benchmark/benchmark.h>
#include <cstdlib>
#include <vector>

#include "support/tracked_allocation.h"

namespace {

constexpr std::size_t kBlocks = 100000;
constexpr std::size_t kSize = 48;
constexpr int kTag = 1;

// The oldest block is freed first: the order that is hardest to find them in.
template <class Allocate, class Free>
void hold_many(benchmark::State& state, Allocate allocate, Free free_block) {
  std::vector<void*> blocks(kBlocks);
  while (state.KeepRunning()) {
    for (void*& block : blocks) block = allocate(kSize);
    for (void* const block : blocks) free_block(block);
  }
  state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(kBlocks));
}

void tracked_blocks(benchmark::State& state) {
  hold_many(
      state, [](std::size_t size) { return fld::cv_maloc(size, kTag); }, fld::cv_mfree);
}
BENCHMARK(tracked_blocks);

void malloc_blocks(benchmark::State& state) {
  hold_many(
      state, [](std::size_t size) { return malloc(size); }, free);
}
BENCHMARK(malloc_blocks);

}  // namespace
