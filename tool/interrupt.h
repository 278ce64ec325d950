// Ctrl-C, and the signal that asks a program to end: the first one lets long work stop where nothing is left
// half done, the second one ends the program at once.
#pragma once

#include <stdexcept>

namespace tool {

// From now on SIGINT and SIGTERM are noted. One that is ignored already, as behind nohup, stays so.
void catch_interrupts();

// Whether one of them has come.
bool interrupted();

// Ends the program with the status of interrupted work. Whoever writes files catches it, or asks
// `interrupted()`, and leaves only complete ones behind.
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
