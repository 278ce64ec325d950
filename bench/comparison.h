// What is compared: the sides of a comparison, which run in turn, and the goals that their figures are held
// to.
#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "bench/child_process.h"
#include "bench/datasets.h"

namespace bench {

enum class Figure { kSeconds, kMemory, kCount };

// A row of the table: the figure of one side against that of another, or against a number.
struct Row {
  std::string name{};  // by which the row is chosen
  std::string what{};
  std::optional<double> goal{};  // the most that the ratio may be; rows that explain others have none
  Figure figure = Figure::kSeconds;
  std::size_t side = 0;
  std::size_t against = 1;                 // the other side
  std::optional<double> against_number{};  // in its place
  double allowance = 0.0;                  // taken off the side's figure before the ratio
  double side_units = 1.0;                 // figures are per unit
  double against_units = 1.0;
  std::string missing{};  // why the row cannot be measured here; empty when it can
};

// How many threads the reader uses for a large array.
int threads_of_reader();

// The goal of a row whose work the reader's threads share.
double goal_of_threads(double one, double several);

struct Comparison {
  std::vector<Work> sides{};
  std::vector<Row> rows{};
};

// Comparisons over the same datasets.
struct Family {
  std::vector<std::string> names{};  // of its rows
  // Writes the datasets and says what to compare. The datasets stay until the family is done.
  std::function<std::vector<Comparison>(Datasets&)> prepare{};
};

struct Result {
  Row row{};
  double ratio = 0.0;  // median of the runs'
  double side = 0.0;   // median: seconds, bytes or a count, per unit
  double against = 0.0;
  bool is_met() const { return !row.goal || ratio <= *row.goal; }
};

// What counts as time. Elapsed is what a user waits for; a busy machine adds to it what others do.
enum class Clock { kElapsed, kProcessor };

// Runs the sides in turn, `runs` times after one run that is not measured, each in a process of its own.
std::vector<Result> measure(const Comparison& comparison, int runs, Clock clock);

// The families of the table, in its order.
Family opening_rows();
Family part_rows();
Family mixed_rows();
Family peer_rows();
Family surface_rows();
Family growth_rows();
Family series_rows();
Family region_rows();
Family motion_rows();

}  // namespace bench
