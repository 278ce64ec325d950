// Captures what a reader writes to the standard error stream (file descriptor 2) while an entry point runs.
//
// While a Scope lives, descriptor 2 refers to an anonymous file; afterwards it is the process's own again, or
// closed if it was, and the text is added to the capture's. What other threads write there in the meantime is
// captured too. If a signal ends the process inside a scope, as a failed assertion of the reader does, the
// captured text is written to the process's own stream.
#pragma once

#include <cstddef>
#include <string>
#include <sys/types.h>
#include <vector>

namespace host {

class DiagnosticsCapture {
 public:
  // Throws Error when no anonymous file can be made.
  DiagnosticsCapture();
  DiagnosticsCapture(const DiagnosticsCapture&) = delete;
  DiagnosticsCapture& operator=(const DiagnosticsCapture&) = delete;
  ~DiagnosticsCapture();

  // Captures while it lives. At most one scope at a time in a process.
  class Scope {
   public:
    explicit Scope(DiagnosticsCapture& capture);
    Scope(const Scope&) = delete;
    Scope& operator=(const Scope&) = delete;
    ~Scope();

   private:
    DiagnosticsCapture& capture_;
  };

  // What the scopes captured so far, in order, each text as shortened() keeps it. After 16 MiB no more is
  // added, and a last line says so.
  const std::string& text() const { return text_; }

  // What the latest scope captured, as shortened() keeps it.
  const std::string& latest() const { return latest_; }

  // The files that the reader traced in the latest scope, from the whole text (see traced_files).
  const std::vector<std::string>& latest_files() const { return latest_files_; }

  // Whether the text of the scope that is alive ends with the C library's report of a failed assertion. May
  // be called in a signal handler.
  static bool shows_failed_assertion();

 private:
  void begin();
  void end() noexcept;
  void keep_text();

  void open_file();

  int file_ = -1;
  pid_t owner_ = 0;  // the process that the file belongs to
  int own_stream_ = -1;
  std::string text_;
  std::string latest_;
  std::vector<std::string> latest_files_;
};

}  // namespace host
