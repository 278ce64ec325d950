#include "tool/interrupt.h"

#include <array>
#include <csignal>
#include <string_view>
#include <unistd.h>

#include "tool/exit_status.h"

namespace tool {
namespace {

constexpr std::array kSignals = {SIGINT, SIGTERM};

volatile std::sig_atomic_t signal_came = 0;
volatile std::sig_atomic_t exits_at_once = 0;
volatile std::sig_atomic_t has_terminal = 0;

// What the rest of the program does for Interrupted, with functions that a signal handler may call.
[[noreturn]] void exit_interrupted() {
  constexpr std::string_view kEraseLine = "\r\x1b[K";
  constexpr std::string_view kLine = "fldtool: interrupted\n";
  if (has_terminal != 0) static_cast<void>(!write(STDERR_FILENO, kEraseLine.data(), kEraseLine.size()));
  static_cast<void>(!write(STDERR_FILENO, kLine.data(), kLine.size()));
  _exit(static_cast<int>(ExitStatus::interrupted));
}

void note_signal(int /*number*/) {
  if (exits_at_once != 0) exit_interrupted();
  signal_came = 1;
  // The next signal has its default effect.
  for (const int number : kSignals) std::signal(number, SIG_DFL);
}

}  // namespace

void catch_interrupts() {
  signal_came = 0;
  for (const int number : kSignals) {
    struct sigaction action = {};
    sigaction(number, nullptr, &action);
    if (action.sa_handler == SIG_IGN) continue;
    action = {};
    action.sa_handler = note_signal;
    // System calls are restarted; the loops poll and stop.
    action.sa_flags = SA_RESTART;
    sigemptyset(&action.sa_mask);
    sigaction(number, &action, nullptr);
  }
}

bool interrupted() {
  return signal_came != 0;
}

void stop_if_interrupted() {
  if (interrupted()) throw Interrupted();
}

ExitAtOnce::ExitAtOnce() {
  has_terminal = isatty(STDERR_FILENO);
  exits_at_once = 1;
  if (!interrupted()) return;
  exits_at_once = 0;
  throw Interrupted();
}

ExitAtOnce::~ExitAtOnce() {
  exits_at_once = 0;
}

}  // namespace tool
