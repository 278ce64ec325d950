// The main function of the programs here.
#pragma once

#include <cstdio>
#include <exception>

#include "fmt/format.h"

namespace bench {

// The exit status of `run`. An exception becomes a line of error and status 1.
inline int run_program(const char* name, int (*run)(int, char**), int argc, char** argv) {
  try {
    return run(argc, argv);
  } catch (const std::exception& error) {
    fmt::print(stderr, "{}: {}\n", name, error.what());
    return 1;
  }
}

}  // namespace bench
