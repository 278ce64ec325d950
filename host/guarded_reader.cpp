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

const std::string& GuardedReader::diagnostics() const {
  return capture_ ? capture_->text() : kNothing;
}

const std::string& GuardedReader::latest_diagnostics() const {
  return capture_ ? capture_->latest() : kNothing;
}

void GuardedReader::throw_as_aborted(const char* entry_point) {
  has_aborted_ = true;
  const std::string reason = reason_in_diagnostics(latest_diagnostics());
  throw Error(entry_point, "the reader gave up" + (reason.empty() ? "" : ": " + reason));
}

void GuardedReader::throw_as_error(const char* entry_point) {
  try {
    throw;
  } catch (const fld::FLDException& exception) {
    throw Error(entry_point, exception.getMessage());
  } catch (const std::exception& exception) {
    throw Error(entry_point, exception.what());
  } catch (...) {
    throw Error(entry_point, type_name(abi::__cxa_current_exception_type()));
  }
}

}  // namespace host
