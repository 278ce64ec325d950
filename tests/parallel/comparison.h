// Holds the shares that ranks read against what a host gets from the plug-in.
#pragma once

#include <filesystem>
#include <string>

namespace parallel_test {

// Goes through all steps of the dataset on so many ranks, and compares every part and variable, cell by cell
// and value by value. The first difference, or nothing. With `backwards` through the steps from the last to
// the first, with what is kept from step to step.
std::string difference_from_plugin(const std::filesystem::path& file, int ranks, bool backwards = false);

}  // namespace parallel_test
