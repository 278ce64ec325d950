#include "host/diagnostics_capture.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <exception>
#include <fcntl.h>
#include <string_view>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include "host/error.h"

namespace host {
namespace {

constexpr std::size_t kMaxText = std::size_t{16} << 20;
constexpr std::size_t kMaxLatest = std::size_t{1} << 20;
constexpr char kCutNote[] = "\n(further diagnostics are not kept)\n";

// The signals that end a process from inside a call.
constexpr std::array kFatalSignals = {SIGABRT, SIGSEGV, SIGBUS, SIGFPE, SIGILL};

// What the signal handler needs of the capture whose scope is alive.
struct ActiveScope {
  int memory_file = -1;
  int own_stream = -1;  // none where descriptor 2 was closed
  std::array<struct sigaction, kFatalSignals.size()> previous = {};
};

ActiveScope active;

[[noreturn]] void throw_failure(int error) {
  throw Error("cannot capture the reader's diagnostics: " + std::string(std::strerror(error)));
}

void restore_signals() {
  for (std::size_t i = 0; i < kFatalSignals.size(); ++i)
    sigaction(kFatalSignals[i], &active.previous[i], nullptr);
}

// Descriptor 2 becomes what it was: the process's own stream, or closed where there was none.
void give_back_stream(int own_stream) {
  if (own_stream >= 0) {
    dup2(own_stream, STDERR_FILENO);
  } else {
    close(STDERR_FILENO);
  }
}

void write_to_stream(std::string_view text) {
  while (!text.empty()) {
    const ssize_t written = write(STDERR_FILENO, text.data(), text.size());
    if (written < 0 && errno != EINTR) return;
    if (written > 0) text.remove_prefix(static_cast<std::size_t>(written));
  }
}

// Brings the captured text out, then lets the signal do what it would have done without a capture.
void on_fatal_signal(int signal_number, siginfo_t* info, void* /*context*/) {
  give_back_stream(active.own_stream);
  restore_signals();
  struct stat status = {};
  if (fstat(active.memory_file, &status) == 0 && status.st_size > 0) {
    const auto size = static_cast<std::size_t>(status.st_size);
    void* text = mmap(nullptr, size, PROT_READ, MAP_SHARED, active.memory_file, 0);
    if (text != MAP_FAILED) write_to_stream({static_cast<const char*>(text), size});
  }
  // A fault repeats itself on return; a signal that was sent has to be sent again.
  if (info->si_code <= 0) raise(signal_number);
}

}  // namespace

DiagnosticsCapture::DiagnosticsCapture() {
  const int file = memfd_create("reader-diagnostics", MFD_CLOEXEC);
  if (file < 0) throw_failure(errno);
  // Where the process has closed its standard streams, this is one of their descriptors.
  memory_file_ = fcntl(file, F_DUPFD_CLOEXEC, STDERR_FILENO + 1);
  const int error = errno;
  close(file);
  if (memory_file_ < 0) throw_failure(error);
}

DiagnosticsCapture::~DiagnosticsCapture() {
  close(memory_file_);
}

DiagnosticsCapture::Scope::Scope(DiagnosticsCapture& capture) : capture_(capture) {
  capture_.begin();
}

DiagnosticsCapture::Scope::~Scope() {
  capture_.end();
}

void DiagnosticsCapture::begin() {
  std::fflush(stderr);
  own_stream_ = fcntl(STDERR_FILENO, F_DUPFD_CLOEXEC, STDERR_FILENO + 1);
  const bool is_closed = own_stream_ < 0 && errno == EBADF;
  if ((own_stream_ < 0 && !is_closed) || dup2(memory_file_, STDERR_FILENO) < 0) {
    const int error = errno;
    if (own_stream_ >= 0) close(own_stream_);
    throw_failure(error);
  }
  active.memory_file = memory_file_;
  active.own_stream = own_stream_;
  struct sigaction action = {};
  action.sa_sigaction = on_fatal_signal;
  action.sa_flags = SA_SIGINFO;
  sigemptyset(&action.sa_mask);
  for (std::size_t i = 0; i < kFatalSignals.size(); ++i)
    sigaction(kFatalSignals[i], &action, &active.previous[i]);
}

void DiagnosticsCapture::end() noexcept {
  std::fflush(stderr);
  restore_signals();
  give_back_stream(own_stream_);
  if (own_stream_ >= 0) close(own_stream_);
  own_stream_ = -1;
  try {
    keep_text();
  } catch (const std::exception&) {
    // No memory for the text: the call's result matters more than what was written beside it.
    latest_.clear();
  }
  // The next scope starts with an empty file; the offset is shared with what was descriptor 2.
  if (ftruncate(memory_file_, 0) == 0) lseek(memory_file_, 0, SEEK_SET);
}

// A line that does not fit is left out altogether: it could name another file than the whole one.
void DiagnosticsCapture::add(std::string_view captured) {
  const std::size_t room = kMaxText - std::min(kMaxText, text_.size());
  cut_ = captured.size() > room;
  if (cut_) captured = captured.substr(0, captured.substr(0, room).rfind('\n') + 1);
  text_ += captured;
  if (cut_) text_ += kCutNote;
}

void DiagnosticsCapture::keep_text() {
  latest_.clear();
  struct stat status = {};
  if (fstat(memory_file_, &status) != 0 || status.st_size <= 0) return;
  const auto size = static_cast<std::size_t>(status.st_size);
  void* mapped = mmap(nullptr, size, PROT_READ, MAP_SHARED, memory_file_, 0);
  if (mapped == MAP_FAILED) return;
  const std::string_view captured(static_cast<const char*>(mapped), size);
  latest_ = captured.substr(size - std::min(size, kMaxLatest));
  if (!cut_) add(captured);
  munmap(mapped, size);
}

}  // namespace host
