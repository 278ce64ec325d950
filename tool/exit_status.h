// What fldtool tells its caller, and the error that carries it to the end of the program.
#pragma once

#include <stdexcept>
#include <string>

namespace tool {

enum class ExitStatus {
  ok = 0,
  findings = 1,       // what was asked about is not as it should be, or differs
  usage = 2,          // wrong command line
  unreadable = 3,     // the dataset cannot be read
  failure = 4,        // anything that is not one of the others
  interrupted = 130,  // Ctrl-C, as shells count it
};

// The lines about it in every command's help.
inline constexpr char kExitStatusText[] =
    "Exit status: 0 fine, 1 findings or differences, 2 wrong usage, 3 the file cannot be read,\n"
    "4 another failure (such as an output that cannot be written), 130 interrupted.";

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

// Ends the program with a status and no line: the output has said it all.
class QuietExit : public std::runtime_error {
 public:
  explicit QuietExit(ExitStatus status) : std::runtime_error("told in the output"), status_(status) {}

  ExitStatus status() const { return status_; }

 private:
  ExitStatus status_;
};

}  // namespace tool
