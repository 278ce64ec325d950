// Iterates over the elements of one type, which have the rows of a host's table in their order. Large parts
// are split among threads.
#pragma once

#include <cstdint>

#include "dataset/fldgeo.h"
#include "format/code_runs.h"
#include "reader/region_walk.h"
#include "reader/work_tables.h"
#include "support/worker_threads.h"

namespace fld {

// Bytes of an element that are read or written: its type, its nodes and its row.
constexpr size_t kBytesOfElement = 68;

// Calls write(row, e) for each element of type `wanted` of the region; `row` counts from 0.
template <class Write>
void for_each_of_type(const VolumeGeometry& volume, const Elements* elements, int wanted, Write write) {
  const Ranges ranges = ranges_of(volume.nelem, kBytesOfElement);
  const auto rows_before = sums_before<int64_t>(ranges, [&](int64_t begin, int64_t end) {
    int64_t rows = 0;
    for_each_element(volume, elements, begin, end, [&](int, int code) { rows += code == wanted; });
    return rows;
  });
  run_in_threads(ranges.count, [&](int k) {
    int64_t row = rows_before[static_cast<size_t>(k)];
    for_each_element(volume, elements, ranges.begin(k), ranges.end(k), [&](int e, int code) {
      if (code == wanted) write(row++, e);
    });
  });
}

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

// Calls write(place, e) for each element of type `wanted` of the mesh.
template <class Write>
void for_each_of_type(const Elements& elements, int wanted, Write write) {
  const int* const types = elements.type;
  const Ranges ranges = ranges_of(elements.nelem, kBytesOfElement);
  const auto places = sums_before<RowPlace>(ranges, [&](int64_t begin, int64_t end) {
    RowPlace sum;
    for_each_run(types, begin, end, [&](int code, int64_t first, int64_t last) {
      sum += {code == wanted ? last - first : 0, (last - first) * nodes_of_solid(code)};
    });
    return sum;
  });
  run_in_threads(ranges.count, [&](int k) {
    auto [row, head] = places[static_cast<size_t>(k)];
    for_each_run(types, ranges.begin(k), ranges.end(k),
                 [&, &row = row, &head = head](int code, int64_t first, int64_t last) {
                   const int64_t count = last - first;
                   const int nodes = nodes_of_solid(code);
                   if (code == wanted) {
                     for (int64_t i = 0; i < count; ++i)
                       write({row + i, head + i * nodes}, static_cast<int>(first + i));
                     row += count;
                   }
                   head += count * nodes;
                 });
  });
}

}  // namespace fld
