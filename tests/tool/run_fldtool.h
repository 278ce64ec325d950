// Runs fldtool and catches what it says.
#pragma once

#include <functional>
#include <string>
#include <sys/types.h>
#include <vector>

namespace tool_test {

struct Result {
  int status = -1;     // exit status; -1 when a signal ended the program
  std::string output;  // standard output
  std::string errors;  // standard error stream
};

// In place of a file: the program gets no such stream.
inline constexpr char kClosed[] = "&-";

// The program: that of this build, unless the variable FLDTOOL names another one, as scripts/mutants does.
std::string fldtool();

// With `output_file` the standard output goes there instead, with `errors_file` the standard error stream.
Result run_fldtool(const std::vector<std::string>& arguments, const std::string& output_file = "",
                   const std::string& errors_file = "");

// The standard error stream is a terminal; `errors` is what was drawn on it.
Result run_fldtool_on_terminal(const std::vector<std::string>& arguments);

// Sends the signal as soon as there is output, of which nothing is read before that: the output has to be
// longer than a pipe holds back (64 KiB), so that the program is in the middle of its work.
Result run_fldtool_and_interrupt(const std::vector<std::string>& arguments, int signal_number);

// Sends the signal as soon as something is drawn on the terminal that the standard error stream is.
Result run_fldtool_on_terminal_and_interrupt(const std::vector<std::string>& arguments, int signal_number);

// Sends the signal as soon as `is_time`, which is asked every millisecond while the program runs.
Result run_fldtool_and_interrupt_when(const std::vector<std::string>& arguments,
                                      const std::function<bool(pid_t)>& is_time, int signal_number);

// Whether the process has the file open.
bool has_open(pid_t process, const std::string& file);

// Expects this exit status, "fldtool: `line`" on the standard error stream, and no output.
void expect_error(const std::vector<std::string>& arguments, int status, const std::string& line);

}  // namespace tool_test
