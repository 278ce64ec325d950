// Holds the shares that ranks read against what a host gets from the plug-in.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace parallel_test {

// How the steps are gone through: on so many ranks, from the first to the last or the other way round, with
// what is kept from step to step.
struct Way {
  int ranks = 1;
  bool is_backwards = false;
};

inline const std::vector<Way> kOnSomeRanks = {{1}, {2}, {3}, {5}};

// Goes through all steps of the dataset in each way, and compares every part and variable, cell by cell and
// value by value. The first difference, or nothing.
std::string difference_from_plugin(const std::filesystem::path& file, const std::vector<Way>& ways);

}  // namespace parallel_test
