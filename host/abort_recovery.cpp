#include "host/abort_recovery.h"

#include <csetjmp>
#include <csignal>
#include <unistd.h>

namespace host {
namespace {

// Where to go on, for the thread that makes the call.
struct Recovery {
  sigjmp_buf place = {};
  pid_t thread = 0;
};

Recovery recovery;

void on_abort(int signal_number) {
  if (gettid() == recovery.thread) siglongjmp(recovery.place, 1);
  std::signal(signal_number, SIG_DFL);
  raise(signal_number);
}

// Takes over SIGABRT for as long as it lives.
class AbortHandler {
 public:
  AbortHandler() {
    struct sigaction action = {};
    action.sa_handler = on_abort;
    sigemptyset(&action.sa_mask);
    recovery.thread = gettid();
    sigaction(SIGABRT, &action, &previous_);
  }
  AbortHandler(const AbortHandler&) = delete;
  AbortHandler& operator=(const AbortHandler&) = delete;
  ~AbortHandler() {
    sigaction(SIGABRT, &previous_, nullptr);
    recovery.thread = 0;
  }

 private:
  struct sigaction previous_ = {};
};

}  // namespace

bool runs_without_abort(const std::function<void()>& call) {
  const AbortHandler handler;
  // The jump passes over the reader's frames alone, which the process would never have come back to either.
  if (sigsetjmp(recovery.place, 1) != 0) return false;
  call();
  return true;
}

}  // namespace host
