// The exit statuses of fldtool, and the exceptions that end the program with one.
#pragma once

#include <stdexcept>
#include <string>

namespace tool {

enum class ExitStatus {
  ok = 0,
  findings = 1,       // check found something, or diff differences
  usage = 2,          // wrong command line
  unreadable = 3,     // the dataset cannot be read
  failure = 4,        // anything that is not one of the others
  interrupted = 130,  // Ctrl-C, as shells count it
};

// For the help of every command.
inline constexpr char kExitStatusText[] =
    "Exit status: 0 success, 1 findings or differences, 2 usage error, 3 the file cannot be read,\n"
    "4 any other failure (such as an output that cannot be written), 130 interrupted.";

// Ends the program with a status and the line "fldtool: message".
class CommandError : public std::runtime_error {
 public:
  CommandError(ExitStatus status, const std::string& message)
      : std::runtime_error(message), status_(status) {}
  // About a file: the line is "fldtool: file: message".
  CommandError(ExitStatus status, const std::string& file, const std::string& message)
      : CommandError(status, file + ": " + message) {
    file_ = file;
    reason_ = message;
  }

  ExitStatus status() const { return status_; }
  // The file that it is about and the message without it; empty unless they were given.
  const std::string& file() const { return file_; }
  const std::string& reason() const { return reason_; }

 private:
  ExitStatus status_;
  std::string file_;
  std::string reason_;
};

// Ends the program with a status and without a message: the output is enough.
class QuietExit : public std::runtime_error {
 public:
  explicit QuietExit(ExitStatus status) : std::runtime_error("see the output"), status_(status) {}

  ExitStatus status() const { return status_; }

 private:
  ExitStatus status_;
};

}  // namespace tool
