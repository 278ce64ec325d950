// SIGINT (Ctrl-C) and SIGTERM: the first one lets long work stop at a safe point, the second one ends the
// process at once.
#pragma once

#include <stdexcept>

namespace tool {

// Installs the handlers. A signal that is already ignored, as under nohup, stays ignored.
void catch_interrupts();

// Whether one of them has come.
bool interrupted();

// Ends the program with ExitStatus::interrupted. Code that writes files removes incomplete ones when it
// passes.
class Interrupted : public std::runtime_error {
 public:
  Interrupted() : std::runtime_error("interrupted") {}
};

// For loops: throws Interrupted if a signal has come.
void stop_if_interrupted();

// As long as one exists, a signal ends the program at once, with the same line and status as Interrupted: for
// calls of libraries that cannot be stopped, while no file is half written. One at a time.
class ExitAtOnce {
 public:
  // Throws Interrupted if a signal has come.
  ExitAtOnce();
  ExitAtOnce(const ExitAtOnce&) = delete;
  ExitAtOnce& operator=(const ExitAtOnce&) = delete;
  ~ExitAtOnce();
};

}  // namespace tool
