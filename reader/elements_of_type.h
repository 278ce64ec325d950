// Iterates over the elements of one type, which have the rows of a host's table in their order. Large parts
// are split among threads.
#pragma once

#include <algorithm>
#include <array>
#include <cstdint>

#include "dataset/fldgeo.h"
#include "format/code_runs.h"
#include "reader/region_walk.h"
#include "reader/work_tables.h"
#include "support/worker_threads.h"

namespace fld {

// Bytes of an element that are read or written: its type, its nodes and its row.
constexpr size_t kBytesOfElement = 68;

// A row, and the offset in the connectivity of the element that comes next.
struct RowPlace {
  int64_t row = 0;
  long head = 0;

  RowPlace& operator+=(const RowPlace& other) {
    row += other.row;
    head += other.head;
    return *this;
  }
};

// Calls work(begin, end, place) for ranges of the `n` elements which together have all the rows; `place` is
// that of element `begin`. measure(begin, end) tells by how much the place changes over a range. Elements of
// one type mostly stand together, so the threads share the rows, not the elements.
template <class Measure, class Work>
void for_ranges_of_rows(int64_t n, Measure measure, Work work) {
  const int threads = ranges_of(n, kBytesOfElement).count;
  if (threads == 1) return work(0, n, RowPlace{});
  constexpr int kBlocks = 64;
  const Ranges blocks = {n, kBlocks};
  const Ranges blocks_of_threads = {kBlocks, threads};
  std::array<RowPlace, kBlocks + 1> places = {};
  run_in_threads(threads, [&](int k) {
    const auto end = static_cast<int>(blocks_of_threads.end(k));
    for (auto block = static_cast<int>(blocks_of_threads.begin(k)); block < end; ++block)
      places[static_cast<size_t>(block) + 1] = measure(blocks.begin(block), blocks.end(block));
  });
  for (size_t block = 0; block < kBlocks; ++block) places[block + 1] += places[block];
  // The first block that has the rows of `k` threads before it.
  const auto first_block = [&](int k) {
    const int64_t rows = Ranges{places.back().row, threads}.begin(k);
    const auto* const place = std::partition_point(
        places.begin(), places.end(), [rows](const RowPlace& before) { return before.row < rows; });
    return static_cast<int>(place - places.begin());
  };
  run_in_threads(threads, [&](int k) {
    const int first = first_block(k);
    work(blocks.begin(first), blocks.begin(first_block(k + 1)), places[static_cast<size_t>(first)]);
  });
}

// Calls write(row, e) for each element of type `wanted` of the region; `row` counts from 0.
template <class Write>
void for_each_of_type(const VolumeGeometry& volume, const Elements* elements, int wanted, Write write) {
  const auto rows_of = [&](int64_t begin, int64_t end) {
    RowPlace sum;
    for_each_element(volume, elements, begin, end, [&](int, int code) { sum.row += code == wanted; });
    return sum;
  };
  for_ranges_of_rows(volume.nelem, rows_of, [&](int64_t begin, int64_t end, RowPlace place) {
    for_each_element(volume, elements, begin, end, [&, row = place.row](int e, int code) mutable {
      if (code == wanted) write(row++, e);
    });
  });
}

// Calls write(place, e) for each element of type `wanted` of the mesh.
template <class Write>
void for_each_of_type(const Elements& elements, int wanted, Write write) {
  const int* const types = elements.type;
  const auto place_after = [=](int64_t begin, int64_t end) {
    RowPlace sum;
    for_each_run(types, begin, end, [&](int code, int64_t first, int64_t last) {
      sum += {code == wanted ? last - first : 0, (last - first) * nodes_of_solid(code)};
    });
    return sum;
  };
  for_ranges_of_rows(elements.nelem, place_after, [&](int64_t begin, int64_t end, RowPlace place) {
    for_each_run(types, begin, end, [&, place](int code, int64_t first, int64_t last) mutable {
      const int64_t count = last - first;
      const int nodes = nodes_of_solid(code);
      if (code == wanted) {
        for (int64_t i = 0; i < count; ++i)
          write({place.row + i, place.head + i * nodes}, static_cast<int>(first + i));
      }
      place += {code == wanted ? count : 0, count * nodes};
    });
  });
}

}  // namespace fld
