#include "host/abort_recovery.h"

#include <csetjmp>
#include <csignal>
#include <unistd.h>

#include "host/diagnostics_capture.h"

namespace host {
namespace {

// Where to continue, for the thread that makes the call.
struct Recovery {
  sigjmp_buf place = {};
  pid_t thread = 0;
  struct sigaction previous = {};
};

Recovery recovery;

void on_abort(int signal_number) {
  if (gettid() == recovery.thread && DiagnosticsCapture::shows_failed_assertion()) {
    siglongjmp(recovery.place, 1);
  }
  sigaction(SIGABRT, &recovery.previous, nullptr);
  raise(signal_number);
}

// Handles SIGABRT for as long as it lives.
class AbortHandler {
 public:
  AbortHandler() {
    struct sigaction action = {};
    action.sa_handler = on_abort;
    sigemptyset(&action.sa_mask);
    recovery.thread = gettid();
    sigaction(SIGABRT, &action, &recovery.previous);
  }
  AbortHandler(const AbortHandler&) = delete;
  AbortHandler& operator=(const AbortHandler&) = delete;
  ~AbortHandler() {
    sigaction(SIGABRT, &recovery.previous, nullptr);
    recovery.thread = 0;
  }
};

}  // namespace

bool runs_without_assertion(const std::function<void()>& call) {
  const AbortHandler handler;
  // The jump skips only frames of the reader, to which the process would not have returned either.
  if (sigsetjmp(recovery.place, 1) != 0) return false;
  call();
  return true;
}

}  // namespace host
