#include "host/guarded_reader.h"

#include <cstdlib>
#include <cxxabi.h>
#include <exception>
#include <memory>
#include <typeinfo>

#include "host/diagnostic_text.h"
#include "support/errors.h"

namespace host {
namespace {

const std::string kNothing;

std::string type_name(const std::type_info* type) {
  if (type == nullptr) return "an exception of another language";
  int status = 0;
  const std::unique_ptr<char, decltype(&std::free)> readable(
      abi::__cxa_demangle(type->name(), nullptr, nullptr, &status), &std::free);
  return "an exception of type " + std::string(status == 0 ? readable.get() : type->name());
}

}  // namespace

std::string GuardedReader::failure_reason(int result) const {
  const std::string reason = reason_in_diagnostics(latest_diagnostics());
  return reason.empty() ? "the result is " + std::to_string(result) : reason;
}

std::string GuardedReader::failing_file() const {
  const std::string named = last_named_file(latest_diagnostics());
  return named.empty() ? file_ : named;
}

Error GuardedReader::error(const char* entry_point, const std::string& reason) const {
  Error error(entry_point, reason);
  error.locate(failing_file(), step_);
  return error;
}

const std::string& GuardedReader::diagnostics() const {
  return capture_ ? capture_->text() : kNothing;
}

const std::string& GuardedReader::latest_diagnostics() const {
  return capture_ ? capture_->latest() : kNothing;
}

void GuardedReader::throw_as_aborted(const char* entry_point) {
  has_aborted_ = true;
  const std::string reason = reason_in_diagnostics(latest_diagnostics());
  throw error(entry_point, "the reader gave up" + (reason.empty() ? "" : ": " + reason));
}

void GuardedReader::throw_as_error(const char* entry_point) {
  try {
    throw;
  } catch (const fld::FLDException& exception) {
    throw error(entry_point, exception.getMessage());
  } catch (const std::exception& exception) {
    throw error(entry_point, exception.what());
  } catch (...) {
    throw error(entry_point, type_name(abi::__cxa_current_exception_type()));
  }
}

}  // namespace host
