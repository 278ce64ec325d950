// Keeps what a reader writes to the standard error stream (file descriptor 2) while one of its entry points
// runs.
//
// For as long as a Scope lives, descriptor 2 leads into a memory file; afterwards it is the process's own
// again, or closed if it was, and the text is added to the capture's. Whatever other threads write there in
// the meantime is captured too. If a signal ends the process inside a scope, as a failing assertion of the
// reader does, the captured text is written to descriptor 2 after all.
#pragma once

#include <cstddef>
#include <string>

namespace host {

class DiagnosticsCapture {
 public:
  // Throws Error when the system gives no memory file.
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

  // All that was captured so far, in order. A text of more than 16 MiB is cut behind a whole line: later text
  // is dropped and a last line says so.
  const std::string& text() const { return text_; }

  // What the latest scope captured; of a very long text the end.
  const std::string& latest() const { return latest_; }

 private:
  void begin();
  void end() noexcept;
  void keep_text();
  void add(std::string_view captured);

  int memory_file_ = -1;
  int own_stream_ = -1;
  std::string text_;
  std::string latest_;
  bool cut_ = false;
};

}  // namespace host
