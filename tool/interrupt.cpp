#include "tool/interrupt.h"

#include <array>
#include <csignal>

namespace tool {
namespace {

constexpr std::array kSignals = {SIGINT, SIGTERM};

volatile std::sig_atomic_t signal_came = 0;

void note_signal(int /*number*/) {
  signal_came = 1;
  // The next one does what it would have done without us.
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
    // Reading and writing go on: it is for the loops to stop.
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

}  // namespace tool
