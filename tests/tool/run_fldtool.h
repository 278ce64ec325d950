// Runs fldtool and catches what it says.
#pragma once

#include <string>
#include <vector>

namespace tool_test {

struct Result {
  int status = -1;     // exit status; -1 when a signal ended the program
  std::string output;  // standard output
  std::string errors;  // standard error stream
};

// With `output_file` the standard output goes there instead.
Result run_fldtool(const std::vector<std::string>& arguments, const std::string& output_file = "");

}  // namespace tool_test
