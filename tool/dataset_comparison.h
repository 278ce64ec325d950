// Compares two open datasets step by step. Memory: one part or one variable of each at a time.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "host/session.h"
#include "tool/chosen_parts.h"
#include "tool/coordinate_names.h"
#include "tool/dataset_options.h"
#include "tool/difference.h"
#include "tool/read_error.h"

namespace tool {

struct ComparisonChoice {
  std::vector<std::pair<int, int>> steps;  // of both; all steps when it is empty
  std::vector<std::string> parts;          // as on the command line
  std::vector<std::string> variables;
  Tolerance tolerance;
};

class DatasetComparison {
 public:
  // Called for every difference, in the order of steps, parts and variables.
  using Tell = std::function<void(const Difference&)>;
  // Called between two pieces of work, with how many are done of how many; it may throw to stop.
  using Progress = std::function<void(std::uint64_t done, std::uint64_t total)>;

  DatasetComparison(OpenDataset& a, OpenDataset& b, ComparisonChoice choice, Tell tell, Progress progress);

  // Compares what is not in the steps, and returns how many pairs of steps there are to compare. Throws
  // CommandError for parts or variables that do not exist.
  std::size_t begin();
  // Compares a pair of steps, from 0.
  void compare_pair(std::size_t pair);
  // Tells the progress when so many pairs are compared.
  void tell_progress(std::size_t pairs) const { progress_(pairs * work_per_pair_, total_); }
  // The steps of the first dataset that are compared.
  std::vector<int> steps() const;

  // What could not be read, and so not compared: the file, the step and the reason.
  const std::vector<ReadProblem>& problems() const { return problems_; }

 private:
  // What is in both, by the numbers in each.
  struct Pair {
    int a;
    int b;
    std::string name;  // UTF-8
    std::string kind;  // of a part, in words
  };

  std::vector<Pair> match_parts();
  void match_variables();
  void compare_times();
  void compare_steps(int step_a, int step_b);
  void compare_mesh(const Pair& part);
  void compare_elements(const Pair& part);
  void compare_variable(const Pair& variable, const Pair& part);
  bool compare_component(const Pair& variable, const Pair& part, int component);
  // Notes the error of a dataset that could not be read. False if there was one, or the session was lost
  // before.
  template <typename Read>
  bool reads(OpenDataset& dataset, Read read);
  void note_problem(const ReadProblem& problem);
  void tell(Difference difference);
  void advance();

  OpenDataset& a_;
  OpenDataset& b_;
  ComparisonChoice choice_;
  Tell tell_;
  Progress progress_;
  ChosenParts parts_;  // of the first dataset, at its first step
  std::vector<Pair> variables_;
  CoordinateNames names_;
  std::optional<std::pair<int, int>> steps_;  // those that are being compared
  std::uint64_t done_ = 0;
  std::uint64_t total_ = 0;
  std::size_t work_per_pair_ = 0;
  std::vector<ReadProblem> problems_;
};

}  // namespace tool
