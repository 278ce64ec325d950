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

#include "host/anonymous_file.h"
#include "host/diagnostic_text.h"
#include "host/error.h"

namespace host {
namespace {

constexpr std::size_t kMaxText = std::size_t{16} << 20;
constexpr std::string_view kFullNote = "\n(further diagnostics are not kept)\n";

// The signals that end a process inside a call.
constexpr std::array kFatalSignals = {SIGABRT, SIGSEGV, SIGBUS, SIGFPE, SIGILL};

// What the signal handlers need of the capture whose scope is alive.
struct ActiveScope {
  int file = -1;
  int own_stream = -1;  // -1 when descriptor 2 was closed
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

// Descriptor 2 becomes the process's own stream again, or closed if there was none.
void restore_stream(int own_stream) {
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

// Writes the captured text to the process's own stream, then lets the signal take its usual course.
void on_fatal_signal(int signal_number, siginfo_t* info, void* /*context*/) {
  restore_stream(active.own_stream);
  restore_signals();
  struct stat status = {};
  if (fstat(active.file, &status) == 0 && status.st_size > 0) {
    const auto size = static_cast<std::size_t>(status.st_size);
    void* text = mmap(nullptr, size, PROT_READ, MAP_SHARED, active.file, 0);
    if (text != MAP_FAILED) write_to_stream({static_cast<const char*>(text), size});
  }
  // A fault repeats itself on return; a signal that was sent has to be sent again.
  if (info->si_code <= 0) raise(signal_number);
}

}  // namespace

DiagnosticsCapture::DiagnosticsCapture() {
  open_file();
}

void DiagnosticsCapture::open_file() {
  const int file = open_anonymous_file();
  if (file < 0) throw_failure(errno);
  // If the process has closed its standard streams, this may be one of their descriptors.
  const int duplicate = fcntl(file, F_DUPFD_CLOEXEC, STDERR_FILENO + 1);
  const int error = errno;
  close(file);
  if (duplicate < 0) throw_failure(error);
  if (file_ >= 0) close(file_);
  file_ = duplicate;
  owner_ = getpid();
}

DiagnosticsCapture::~DiagnosticsCapture() {
  close(file_);
}

DiagnosticsCapture::Scope::Scope(DiagnosticsCapture& capture) : capture_(capture) {
  capture_.begin();
}

DiagnosticsCapture::Scope::~Scope() {
  capture_.end();
}

void DiagnosticsCapture::begin() {
  // A process that was forked off must not write into its parent's file.
  if (owner_ != getpid()) open_file();
  std::fflush(stderr);
  own_stream_ = fcntl(STDERR_FILENO, F_DUPFD_CLOEXEC, STDERR_FILENO + 1);
  const bool is_closed = own_stream_ < 0 && errno == EBADF;
  if ((own_stream_ < 0 && !is_closed) || dup2(file_, STDERR_FILENO) < 0) {
    const int error = errno;
    if (own_stream_ >= 0) close(own_stream_);
    throw_failure(error);
  }
  active.file = file_;
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
  active.file = -1;
  restore_signals();
  restore_stream(own_stream_);
  if (own_stream_ >= 0) close(own_stream_);
  own_stream_ = -1;
  try {
    keep_text();
  } catch (const std::exception&) {
    // Out of memory: the result of the call matters more than its diagnostics.
    latest_.clear();
    latest_files_.clear();
  }
  // The next scope starts with an empty file. The file offset is shared with descriptor 2.
  if (ftruncate(file_, 0) == 0) lseek(file_, 0, SEEK_SET);
}

bool DiagnosticsCapture::shows_failed_assertion() {
  constexpr std::string_view kEnd = "' failed.\n";
  std::array<char, 4096> bytes;  // NOLINT(cppcoreguidelines-pro-type-member-init)
  struct stat status = {};
  if (fstat(active.file, &status) != 0) return false;
  const off_t begin = std::max<off_t>(0, status.st_size - static_cast<off_t>(bytes.size()));
  const ssize_t count = pread(active.file, bytes.data(), bytes.size(), begin);
  if (count <= 0) return false;
  std::string_view text(bytes.data(), static_cast<std::size_t>(count));
  if (!text.ends_with(kEnd)) return false;
  text.remove_suffix(1);
  const std::size_t line_end = text.rfind('\n');
  return text.find(": Assertion `", line_end == std::string_view::npos ? 0 : line_end) !=
         std::string_view::npos;
}

void DiagnosticsCapture::keep_text() {
  latest_.clear();
  latest_files_.clear();
  struct stat status = {};
  if (fstat(file_, &status) != 0 || status.st_size <= 0) return;
  const auto size = static_cast<std::size_t>(status.st_size);
  void* mapped = mmap(nullptr, size, PROT_READ, MAP_SHARED, file_, 0);
  if (mapped == MAP_FAILED) return;
  const std::string_view captured(static_cast<const char*>(mapped), size);
  latest_ = shortened(captured);
  latest_files_ = traced_files(captured);
  munmap(mapped, size);
  if (text_.size() > kMaxText) return;
  text_ += latest_;
  if (text_.size() > kMaxText) text_ += kFullNote;
}

}  // namespace host
