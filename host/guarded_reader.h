// Calls a reader's entry points. Exceptions that leave them become a host::Error that names the entry point;
// what they write to the standard error stream can be captured.
#pragma once

#include <optional>
#include <string>
#include <type_traits>
#include <vector>

#include "host/abort_recovery.h"
#include "host/diagnostics_capture.h"
#include "host/entry_points.h"
#include "host/error.h"

namespace host {

class GuardedReader {
 public:
  // Captures the diagnostics of every call, or none.
  explicit GuardedReader(const EntryPoints& entry_points, bool captures = false)
      : entry_points_(&entry_points) {
    if (captures) capture_.emplace();
  }

  const EntryPoints& entry_points() const { return *entry_points_; }

  // From now on a failed assertion of the reader is an Error too, if diagnostics are captured. After it,
  // every further call is refused with an Error.
  void recover_from_assertions() { recovers_ = capture_.has_value(); }
  bool has_aborted() const { return has_aborted_; }

  // Calls the entry point. Throws Error when the library lacks it or an exception leaves it.
  template <typename Result, typename... Parameters, typename... Arguments>
  Result call(const EntryPoint<Result(Parameters...)>& entry_point, Arguments... arguments) {
    if (!entry_point) throw Error(entry_point.name, "the reader library does not have it");
    if (has_aborted_) throw error(entry_point.name, "the reader has given up before");
    {
      std::optional<DiagnosticsCapture::Scope> scope;
      if (capture_) scope.emplace(*capture_);
      try {
        if (!recovers_) return entry_point.function(arguments...);
        if constexpr (std::is_void_v<Result>) {
          if (runs_without_assertion([&] { entry_point.function(arguments...); })) return;
        } else {
          Result result{};
          if (runs_without_assertion([&] { result = entry_point.function(arguments...); })) return result;
        }
      } catch (...) {
        throw_as_error(entry_point.name);
      }
    }
    throw_as_aborted(entry_point.name);
  }

  // Like call, for an entry point of which a negative result means failure: it is thrown as an Error with the
  // last lines that the reader wrote as the reason.
  template <typename... Parameters, typename... Arguments>
  int call_checked(const EntryPoint<int(Parameters...)>& entry_point, Arguments... arguments) {
    const int result = call(entry_point, arguments...);
    if (result < 0) throw error(entry_point.name, failure_reason(result));
    return result;
  }

  // The file and step of the dataset that the next calls read, if known.
  void set_place(const std::string& file, std::optional<int> step) {
    file_ = file;
    step_ = step;
  }

  // An Error of an entry point, with the file that the latest call named last, or else that of set_place().
  Error error(const char* entry_point, const std::string& reason) const;
  std::string failing_file() const;

  // Why the latest call returned `result`, from its diagnostics; the bare result if nothing was captured.
  std::string failure_reason(int result) const;

  // Everything captured so far, and what the latest call wrote; empty without a capture.
  const std::string& diagnostics() const;
  const std::string& latest_diagnostics() const;
  // The files that the reader traced in the latest call.
  std::vector<std::string> latest_files() const {
    return capture_ ? capture_->latest_files() : std::vector<std::string>();
  }
  bool captures() const { return capture_.has_value(); }

 private:
  // Notes that the latest call aborted.
  [[noreturn]] void throw_as_aborted(const char* entry_point);

  // Turns the exception that is being handled into an Error.
  [[noreturn]] void throw_as_error(const char* entry_point);

  const EntryPoints* entry_points_;
  std::optional<DiagnosticsCapture> capture_;
  std::string file_;
  std::optional<int> step_;
  bool recovers_ = false;
  bool has_aborted_ = false;
};

}  // namespace host
