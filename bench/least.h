// What no reader can do without: reading the bytes, here into small buffers, and touching the pages of the
// arrays that are filled, on as many threads as the reader has. A goal below this cannot be met on the
// machine.
#pragma once

#include <cstddef>
#include <filesystem>

#include "bench/child_process.h"
#include "bench/datasets.h"
#include "bench/floor.h"
#include "bench/host_arrays.h"

namespace bench {

struct Least {
  std::filesystem::path file{};
  Stretch stretch{};      // of the file, that is read
  std::size_t bytes = 0;  // of the arrays that are filled
  std::size_t rows = 0;   // of the host's array of pointers to its rows
};

void do_least(const Least& least);
Work least_work(const Least& least);

// Bytes of the arrays that are kept of a box: what its sections hold, and for every element where its nodes
// begin.
std::size_t bytes_kept(const testkit::BoxOptions& box);

// Bytes of coordinates, or of elements without the pointers to their rows, in a host's arrays.
std::size_t coordinate_bytes(std::size_t nodes);
std::size_t element_bytes(const PartInfo& part);

}  // namespace bench
