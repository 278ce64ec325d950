#include "bench/comparison.h"

#include <algorithm>
#include <limits>

#include "support/worker_threads.h"

namespace bench {

namespace {

double figure_of(const Measurement& measured, Figure figure, Clock clock) {
  switch (figure) {
    case Figure::kMemory:
      return measured.bytes;
    case Figure::kCount:
      return measured.count;
    default:
      return clock == Clock::kProcessor ? measured.processor_seconds : measured.seconds;
  }
}

// Of an even number of values, the mean of the two in the middle.
double median(std::vector<double> values) {
  std::sort(values.begin(), values.end());
  return (values[(values.size() - 1) / 2] + values[values.size() / 2]) / 2;
}

using Run = std::vector<Measurement>;  // one per side

Result result_of(const Row& row, const std::vector<Run>& runs, Clock clock) {
  std::vector<double> side;
  std::vector<double> against;
  std::vector<double> ratio;
  for (const Run& run : runs) {
    side.push_back(figure_of(run[row.side], row.figure, clock) / row.side_units);
    const double other =
        row.against_number ? *row.against_number : figure_of(run[row.against], row.figure, clock);
    against.push_back(other / row.against_units);
    ratio.push_back((side.back() - row.allowance) / against.back());
  }
  return {.row = row, .ratio = median(ratio), .side = median(side), .against = median(against)};
}

}  // namespace

int threads_of_reader() {
  return fld::threads_for(std::numeric_limits<std::int64_t>::max());
}

double goal_of_threads(double one, double several) {
  return threads_of_reader() == 1 ? one : several;
}

std::vector<Result> measure(const Comparison& comparison, int runs, Clock clock) {
  std::vector<Run> measured;
  for (int run = -1; run < runs; ++run) {  // run -1 warms the page cache
    Run sides;
    for (const Work& side : comparison.sides) sides.push_back(measure_in_child(side));
    if (run >= 0) measured.push_back(std::move(sides));
  }
  std::vector<Result> results;
  for (const Row& row : comparison.rows) {
    if (row.missing.empty()) {
      results.push_back(result_of(row, measured, clock));
    } else {
      results.push_back({.row = row});
    }
  }
  return results;
}

}  // namespace bench
